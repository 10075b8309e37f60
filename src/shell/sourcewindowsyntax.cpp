#include "shell/sourcewindowsyntax.h"

#include "core/textcase.h"

namespace velmora {

SourceKeywords keywordset(const std::vector<std::string>& words) {
    SourceKeywords set;
    for (const std::string& word : words) set.insert(uppercase(word));
    return set;
}

}  // namespace velmora
