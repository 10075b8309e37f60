#include "models/datadirectory.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace velmora {

namespace {
bool hasmodels(const std::filesystem::path& dir) {
    std::error_code ec;
    if (!std::filesystem::is_directory(dir / "models", ec)) return false;
    for (const auto& entry : std::filesystem::directory_iterator(dir / "models", ec))
        if (entry.path().extension() == ".cfg") return true;
    return false;
}
}  // namespace

std::string datadirectory(const std::string& builddefault) {
    if (const char* env = std::getenv("VELMORA_DATA_DIR"); env && *env) return env;
    std::error_code ec;
    const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (!ec) {
        const auto installed = exe.parent_path().parent_path() / "share" / "velmora";
        if (hasmodels(installed)) return installed.string();
    }
    return builddefault;
}

}  // namespace velmora
