#pragma once
// Colours a source editor's text as its editor settings ask, from the pieces its language's
// splitter finds in each line: keywords, labels, comments, strings and assembler text.

#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <functional>
#include <string_view>
#include <vector>

#include "shell/sourcewindowsettings.h"
#include "shell/sourcewindowsyntax.h"

namespace velmora {

using SpanSplitter = std::function<std::vector<SourceSpan>(std::string_view line)>;

class SourceHighlighter : public QSyntaxHighlighter {
public:
    SourceHighlighter(QTextDocument* document, SpanSplitter splitter, const EditorSettings& settings);

protected:
    void highlightBlock(const QString& text) override;

private:
    const QTextCharFormat& format(SourceSpanKind kind) const;

    SpanSplitter splitter_;
    QTextCharFormat keyword_, label_, comment_, string_, asmcode_;
};

QColor qcolor(const EditorColor& color);

}  // namespace velmora
