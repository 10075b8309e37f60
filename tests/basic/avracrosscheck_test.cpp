// The compatible listing is what another assembler takes: avra assembled it (with the chip's
// include file in front) into NAME-MODEL.avra.hex beside the program, in data/programs and
// data/families (data/programs/make-avra-hex.sh), and the words must equal those the project's
// assembler makes of the ordinary listing.

#include <filesystem>
#include <fstream>

#include "assembler/asmhexfile.h"
#include "basicfixture.h"
#include "image/hexreader.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

const std::filesystem::path kData = VELMORA_TEST_DATA_DIR;

TEST(BasicAvraCrossCheck, CompatibleListingsAssembleToTheSameWords) {
    int compared = 0;
    for (const char* folder : {"programs", "families"}) {
        for (const auto& entry : std::filesystem::directory_iterator(kData / folder)) {
            const std::string file = entry.path().filename().string();
            if (!file.ends_with(".avra.hex")) continue;
            const std::string stem = file.substr(0, file.size() - 9);
            const std::string program = stem.substr(0, stem.find('-')), model = stem.substr(stem.find('-') + 1);
            SCOPED_TRACE(std::string(folder) + "/" + stem);

            const BasicCompileResult result = compilebasic(readfile(kData / folder / (program + ".bas")), model);
            ASSERT_TRUE(result.ok) << result.error;
            AsmContext ours = assemblegenerated(result.asmtext, model);
            ASSERT_EQ(ours.asmerrors, 0);
            const int last = asmbuildimage(ours);

            std::vector<uint8_t> avra(ours.image.size(), 0);
            int highest = 0;
            std::ifstream in(entry.path(), std::ios::binary);
            ASSERT_TRUE(readintelhex(in, avra, highest).ok());
            EXPECT_EQ(highest, last + 1);
            for (int at = 0; at <= last; ++at)
                EXPECT_EQ(ours.image[static_cast<size_t>(at)], avra[static_cast<size_t>(at)]) << "byte " << at;
            ++compared;
        }
    }
    // 10 in programs; 13 family programs (all but lookup) on two models each, and the two
    // interrupt programs on their one model.
    EXPECT_EQ(compared, 10 + 13 * 2 + 2);
}

}  // namespace
}  // namespace velmora::test
