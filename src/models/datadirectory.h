#pragma once
// "The program's directory": where model files and other product data live.

#include <string>

namespace velmora {

// VELMORA_DATA_DIR if set; else <executable>/../share/velmora when it holds model files;
// else `builddefault` (the source tree's data folder when run from a build tree).
std::string datadirectory(const std::string& builddefault);

}  // namespace velmora
