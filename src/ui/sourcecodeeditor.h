#pragma once
// A plain text editor with a line-number margin and marked lines: the source editor of the
// BASIC Compiler and Assembler windows, and the Assembler's read-only listing viewer.

#include <QPlainTextEdit>
#include <vector>

#include "shell/sourcewindowsettings.h"

namespace velmora {

class SourceCodeEditor : public QPlainTextEdit {
public:
    explicit SourceCodeEditor(QWidget* parent = nullptr);

    void applysettings(const EditorSettings& settings);
    // Lines from 1, drawn in the error colour.
    void setmarks(const std::vector<int>& lines);
    const std::vector<int>& marks() const { return marks_; }
    int margin() const;

    // The caret as a byte offset of the UTF-8 text, and back.
    size_t caretoffset() const;
    size_t selectionbytes() const;
    void setcaret(size_t offset, size_t selection);

    void paintmargin(QPaintEvent* event);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void updatemargin();
    void drawmarks();

    QWidget* numbers_;
    std::vector<int> marks_;
    bool linenumbers_ = true;
    QColor numberback_ = QColor(255, 255, 220), numbertext_ = QColor(80, 100, 0), error_ = Qt::red;
};

}  // namespace velmora
