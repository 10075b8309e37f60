#pragma once
// Colours assembler text as the editor settings ask: keywords, labels in the first column
// and comments. The listing viewer has no labels in its first column, only line numbers.

#include <QSyntaxHighlighter>
#include <QTextCharFormat>

#include "shell/asmeditorsettings.h"
#include "shell/asmsyntax.h"

namespace velmora {

class AsmHighlighter : public QSyntaxHighlighter {
public:
    AsmHighlighter(QTextDocument* document, const AsmKeywords& keywords, const AsmEditorSettings& settings,
                   bool labels);

protected:
    void highlightBlock(const QString& text) override;

private:
    const AsmKeywords& keywords_;
    QTextCharFormat keyword_, label_, comment_;
    bool labels_;
};

QColor qcolor(const EditorColor& color);

}  // namespace velmora
