#include "ui/sourcecodeeditor.h"

#include <QPainter>
#include <QTextBlock>

#include "ui/sourcehighlighter.h"

namespace velmora {

namespace {

class LineNumbers : public QWidget {
public:
    explicit LineNumbers(SourceCodeEditor* editor) : QWidget(editor), editor_(editor) {}
    QSize sizeHint() const override { return {editor_->margin(), 0}; }

protected:
    void paintEvent(QPaintEvent* event) override { editor_->paintmargin(event); }

private:
    SourceCodeEditor* editor_;
};

int bytesof(const QString& text) { return static_cast<int>(text.toUtf8().size()); }

}  // namespace

SourceCodeEditor::SourceCodeEditor(QWidget* parent) : QPlainTextEdit(parent), numbers_(new LineNumbers(this)) {
    setLineWrapMode(QPlainTextEdit::NoWrap);
    connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { updatemargin(); });
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
        if (dy != 0)
            numbers_->scroll(0, dy);
        else
            numbers_->update(0, rect.y(), numbers_->width(), rect.height());
    });
    updatemargin();
}

void SourceCodeEditor::applysettings(const EditorSettings& s) {
    QFont font(QString::fromStdString(s.fontname), std::max(s.fontsize, 1));
    font.setStyleHint(QFont::Monospace);
    setFont(font);
    setTabStopDistance(fontMetrics().horizontalAdvance(' ') * std::max(s.tabsize, 1));
    QPalette colours = palette();
    colours.setColor(QPalette::Base, qcolor(s.background));
    colours.setColor(QPalette::Text, qcolor(s.text));
    setPalette(colours);
    linenumbers_ = s.linenumbers;
    numberback_ = qcolor(s.linenumberbackground);
    numbertext_ = qcolor(s.linenumbertext);
    error_ = qcolor(s.error);
    updatemargin();
    drawmarks();
}

int SourceCodeEditor::margin() const {
    if (!linenumbers_) return 0;
    const int digits = QString::number(std::max(1, blockCount())).size();
    return 8 + fontMetrics().horizontalAdvance(QLatin1Char('9')) * std::max(digits, 3);
}

void SourceCodeEditor::updatemargin() {
    setViewportMargins(margin(), 0, 0, 0);
    numbers_->setVisible(linenumbers_);
    const QRect inside = contentsRect();
    numbers_->setGeometry(inside.left(), inside.top(), margin(), inside.height());
}

void SourceCodeEditor::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    updatemargin();
}

void SourceCodeEditor::paintmargin(QPaintEvent* event) {
    QPainter painter(numbers_);
    painter.fillRect(event->rect(), numberback_);
    QTextBlock block = firstVisibleBlock();
    int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
    while (block.isValid() && top <= event->rect().bottom()) {
        const int height = qRound(blockBoundingRect(block).height());
        if (block.isVisible() && top + height >= event->rect().top()) {
            painter.setPen(numbertext_);
            painter.drawText(0, top, numbers_->width() - 4, height, Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(block.blockNumber() + 1));
        }
        top += height;
        block = block.next();
    }
}

void SourceCodeEditor::setmarks(const std::vector<int>& lines) {
    if (lines == marks_) return;
    marks_ = lines;
    drawmarks();
}

void SourceCodeEditor::drawmarks() {
    QList<QTextEdit::ExtraSelection> selections;
    QColor back = error_;
    back.setAlpha(70);
    for (int line : marks_) {
        const QTextBlock block = document()->findBlockByNumber(line - 1);
        if (!block.isValid()) continue;
        QTextEdit::ExtraSelection mark;
        mark.format.setBackground(back);
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        mark.cursor = QTextCursor(block);
        selections.append(mark);
    }
    setExtraSelections(selections);
}

size_t SourceCodeEditor::caretoffset() const {
    const QTextCursor cursor = textCursor();
    return static_cast<size_t>(bytesof(toPlainText().left(cursor.selectionStart())));
}

size_t SourceCodeEditor::selectionbytes() const {
    const QTextCursor cursor = textCursor();
    const int start = cursor.selectionStart();
    return static_cast<size_t>(bytesof(toPlainText().mid(start, cursor.selectionEnd() - start)));
}

void SourceCodeEditor::setcaret(size_t offset, size_t selection) {
    const QByteArray text = toPlainText().toUtf8();
    const qsizetype start = std::min<qsizetype>(static_cast<qsizetype>(offset), text.size());
    const qsizetype end = std::min<qsizetype>(start + static_cast<qsizetype>(selection), text.size());
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(QString::fromUtf8(text.left(start)).size()));
    cursor.setPosition(static_cast<int>(QString::fromUtf8(text.left(end)).size()), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    centerCursor();
}

}  // namespace velmora
