// velmora-cli options: the run command's parser (with the device setups, pin and analog
// inputs, escapes and addresses it checks), the option lists of the other commands, and the
// devices of a run that parsed, wired to a loaded model. Arguments are the input's lines.

#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/rundevices.h"
#include "cli/runoptions.h"
#include "fuzzsupport.h"
#include "fuzztargets.h"

namespace velmora::fuzz {

int fuzz_cli(const uint8_t* data, size_t size) {
    const std::vector<std::string> args = textlines(data, size);

    // The option lists of asm, basic and disasm, as their commands pass them.
    (void)parseargs(args, {"--model"}, {});
    (void)parseargs(args, {"--model", "--clock"}, {"--assemble", "--compatible"});
    (void)parseargs(args, {"--model", "--layout"}, {});

    std::string error;
    const std::optional<RunOptions> options = parserunoptions(args, error);
    if (!options) {
        if (error.empty()) invariantbroken();
        return 0;
    }
    if (options->help || options->devices.empty()) return 0;
    Machine m = atmega32().machine;
    RunDevices devices;
    std::string why;
    (void)devices.attach(m, options->devices, false, why);
    return 0;
}

}  // namespace velmora::fuzz
