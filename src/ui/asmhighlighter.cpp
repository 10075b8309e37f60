#include "ui/asmhighlighter.h"

namespace velmora {

QColor qcolor(const EditorColor& color) { return QColor(color.red, color.green, color.blue); }

AsmHighlighter::AsmHighlighter(QTextDocument* document, const AsmKeywords& keywords,
                               const AsmEditorSettings& settings, bool labels)
    : QSyntaxHighlighter(document), keywords_(keywords), labels_(labels) {
    keyword_.setForeground(qcolor(settings.keyword));
    // Labels have no colour of their own: the text colour, in bold, sets them apart.
    label_.setForeground(qcolor(settings.text));
    label_.setFontWeight(QFont::Bold);
    comment_.setForeground(qcolor(settings.comment));
}

void AsmHighlighter::highlightBlock(const QString& text) {
    // Spans count bytes of UTF-8; assembler source is ASCII, and anything else is only
    // coloured a little off, never read out of range.
    const std::string line = text.toStdString();
    for (const AsmSpan& span : asmsyntaxspans(line, keywords_)) {
        if (span.kind == AsmSpanKind::Label && !labels_) continue;
        const QTextCharFormat& format = span.kind == AsmSpanKind::Keyword ? keyword_
                                        : span.kind == AsmSpanKind::Label ? label_
                                                                          : comment_;
        const int start = QString::fromStdString(line.substr(0, span.start)).size();
        const int length = QString::fromStdString(line.substr(span.start, span.length)).size();
        setFormat(start, length, format);
    }
}

}  // namespace velmora
