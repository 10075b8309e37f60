#include "ui/sourcehighlighter.h"

namespace velmora {

QColor qcolor(const EditorColor& color) { return QColor(color.red, color.green, color.blue); }

SourceHighlighter::SourceHighlighter(QTextDocument* document, SpanSplitter splitter, const EditorSettings& settings)
    : QSyntaxHighlighter(document), splitter_(std::move(splitter)) {
    keyword_.setForeground(qcolor(settings.keyword));
    // Labels have no colour of their own: the text colour, in bold, sets them apart.
    label_.setForeground(qcolor(settings.text));
    label_.setFontWeight(QFont::Bold);
    comment_.setForeground(qcolor(settings.comment));
    string_.setForeground(qcolor(settings.string));
    asmcode_.setForeground(qcolor(settings.asmcode));
}

const QTextCharFormat& SourceHighlighter::format(SourceSpanKind kind) const {
    switch (kind) {
        case SourceSpanKind::Keyword: return keyword_;
        case SourceSpanKind::Label: return label_;
        case SourceSpanKind::Comment: return comment_;
        case SourceSpanKind::String: return string_;
        case SourceSpanKind::Asm: return asmcode_;
    }
    return keyword_;
}

void SourceHighlighter::highlightBlock(const QString& text) {
    // Spans count bytes of UTF-8; source text is ASCII, and anything else is only coloured a
    // little off, never read out of range.
    const std::string line = text.toStdString();
    for (const SourceSpan& span : splitter_(line)) {
        const int start = QString::fromStdString(line.substr(0, span.start)).size();
        const int length = QString::fromStdString(line.substr(span.start, span.length)).size();
        setFormat(start, length, format(span.kind));
    }
}

}  // namespace velmora
