#pragma once
// The Viewer window: a read-only text under a caption, such as the BASIC Compiler's system
// tables, with their tab-separated columns lined up.

#include <QPlainTextEdit>
#include <QWidget>

#include "shell/basiccompilerwindow.h"

namespace velmora {

class ViewerWindow : public QWidget {
public:
    explicit ViewerWindow(QWidget* parent = nullptr);
    // Shows the text under its caption, in place of what was there.
    void showtext(const ViewerText& content);
    QPlainTextEdit* textview() const { return text_; }

private:
    QPlainTextEdit* text_;
};

}  // namespace velmora
