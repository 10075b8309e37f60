#include "ui/viewerwindow.h"

#include <QFontDatabase>
#include <QVBoxLayout>

namespace velmora {

namespace {
constexpr int kTabColumns = 16;  // wide enough for the longest register and bit names
constexpr int kDesignWidth = 560, kDesignHeight = 480;
}  // namespace

ViewerWindow::ViewerWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName("viewer");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    text_ = new QPlainTextEdit;
    text_->setObjectName("viewertext");
    text_->setReadOnly(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_->setTabStopDistance(text_->fontMetrics().horizontalAdvance(' ') * kTabColumns);
    layout->addWidget(text_);
    resize(kDesignWidth, kDesignHeight);
}

void ViewerWindow::showtext(const ViewerText& content) {
    setWindowTitle(QString::fromStdString(content.caption));
    text_->setPlainText(QString::fromStdString(content.text));
    show();
    raise();
    activateWindow();
}

}  // namespace velmora
