#pragma once
// Shipped models as the BASIC compiler sees them, and compiles of one-off sources.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "assembler/asmassemble.h"
#include "basic/basiccompile.h"
#include "basic/basicmodel.h"
#include "core/machine.h"
#include "models/modelfile.h"

namespace velmora::test {

struct LoadedModel {
    Machine machine;
    ModelDefinitions definitions;
    BasicModel basic;
    AsmModel assembler;
};

// The shipped model of that name at 4 MHz, loaded once per test program.
inline const LoadedModel& loadedmodel(const std::string& name) {
    static std::map<std::string, std::unique_ptr<LoadedModel>> cache;
    std::unique_ptr<LoadedModel>& entry = cache[name];
    if (!entry) {
        entry = std::make_unique<LoadedModel>();
        const ModelLoadResult loaded = modelload(std::string(VELMORA_SOURCE_DATA_DIR) + "/models", name, ModelOptions{},
                                                 entry->machine, entry->definitions);
        EXPECT_TRUE(loaded.ok) << name << ": " << loaded.message;
        entry->basic = basicmodelof(entry->machine, entry->definitions, "4.0 MHz", 4);
        entry->assembler = asmmodelof(entry->machine, entry->definitions);
    }
    return *entry;
}

inline const BasicModel& basicmodel(const std::string& name) { return loadedmodel(name).basic; }

inline BasicCompileResult compilebasic(const std::string& source, const std::string& model = "ATmega32",
                                       const CompileOptions& options = {}) {
    return basiccompile(source, basicmodel(model), options);
}

// The generated lines, CR LF removed.
inline std::vector<std::string> asmlines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t end = text.find("\r\n", start);
        lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos) break;
        start = end + 2;
    }
    return lines;
}

// The code of the program's first row that holds `statement`, up to the next row's comment.
inline std::string rowcode(const BasicCompileResult& result, const std::string& statement) {
    std::string code;
    bool inrow = false;
    for (const std::string& line : asmlines(result.asmtext)) {
        if (line.starts_with("; ")) {
            if (inrow) break;
            inrow = line.ends_with(": " + statement);
        } else if (inrow) {
            // "LABEL:<tab>INSTRUCTION" reads "LABEL: INSTRUCTION".
            std::string text = line.starts_with("\t") ? line.substr(1) : line;
            if (const size_t tab = text.find('\t'); tab != std::string::npos) text[tab] = ' ';
            code += (code.empty() ? "" : "|") + text;
        }
    }
    return code;
}

// A routine's lines from its comment to its last RET, labels kept.
inline std::string routine(const BasicCompileResult& result, const std::string& comment) {
    std::string code;
    bool inside = false;
    for (const std::string& line : asmlines(result.asmtext)) {
        if (line == comment) {
            inside = true;
            continue;
        }
        if (!inside) continue;
        if (line.starts_with(";") || line.empty()) break;
        std::string text = line;
        if (const size_t tab = text.find('\t'); tab != std::string::npos) text.replace(tab, 1, tab == 0 ? "" : " ");
        code += (code.empty() ? "" : "|") + text;
    }
    return code;
}

}  // namespace velmora::test

namespace velmora::test {

// The generated text through the project's assembler, as Compile & Assemble does.
inline AsmContext assemblegenerated(const std::string& asmtext, const std::string& model) {
    AsmContext ctx;
    asmassemblelines(ctx, asmlines(asmtext), loadedmodel(model).assembler);
    return ctx;
}

}  // namespace velmora::test

#include "assembler/asmhexfile.h"
#include "core/memorysettings.h"
#include "core/runcontrol.h"
#include "core/peripherals.h"
#include "core/usart.h"
#include "support/simfixture.h"

namespace velmora::test {

// Compiles, assembles and runs a program on the model until it reaches a jump to itself
// (End or Halt); the machine as it stands then. Fails the test on a compile or assembly error.
struct BasicRun {
    Machine m;
    RecordingMessenger messenger;
    ScriptedClock clock;
    MemorySettings settings;
    bool stopped = false;
    std::string sent;  // what the USART sent

    struct NotStarted {};
    // Compiles and assembles; `start()` then runs the program, as often as a test likes.
    // `mhz` compiles for that clock, as the main window's clock field gives it.
    BasicRun(const std::string& source, const std::string& model, NotStarted, long maxsteps = 1000000,
             double mhz = 0)
        : maxsteps_(maxsteps) {
        BasicModel basic = basicmodel(model);
        if (mhz > 0) basic.clockmhz = mhz;
        const BasicCompileResult compiled = basiccompile(source, basic, CompileOptions{});
        EXPECT_TRUE(compiled.ok) << compiled.error;
        AsmContext assembled = assemblegenerated(compiled.asmtext, model);
        EXPECT_EQ(assembled.asmerrors, 0);
        const int last = asmbuildimage(assembled);
        m = loadedmodel(model).machine;
        installperipherals(m);
        for (int at = 0; at <= last && at < static_cast<int>(m.progmem.size()); ++at)
            m.progmem[static_cast<size_t>(at)] = assembled.image[static_cast<size_t>(at)];
        clean(m);
    }
    BasicRun(const std::string& source, const std::string& model, long maxsteps = 1000000)
        : BasicRun(source, model, NotStarted{}, maxsteps) {
        start();
    }

    // Runs from where the machine stands until a jump to itself (End, Halt), then lets the
    // USART finish what the program handed it.
    void start() {
        RunControl run{m, messenger, clock, settings};
        run.phases = standardphases();
        stopped = false;
        for (long step = 0; step < maxsteps_ && !stopped; ++step) {
            const int32_t before = m.pc;
            run.simulatestep();
            stopped = m.pc == before;
        }
        EXPECT_TRUE(stopped) << "no self-jump reached";
        for (long step = 0; step < maxsteps_ && usartbusy(m); ++step) run.simulatestep();
        uint8_t buffer[256];
        for (size_t n; (n = usarttakeoutput(m, buffer, sizeof buffer)) > 0;) sent.append(reinterpret_cast<char*>(buffer), n);
    }
    uint8_t at(int address) const { return m.datamem[static_cast<size_t>(address)]; }
    uint32_t value(int address, int bytes) const {
        uint32_t v = 0;
        for (int k = bytes - 1; k >= 0; --k) v = v << 8 | at(address + k);
        return v;
    }
    void set(int address, int bytes, uint32_t v) {
        for (int k = 0; k < bytes; ++k) m.datamem[static_cast<size_t>(address + k)] = static_cast<uint8_t>(v >> (8 * k));
    }

private:
    long maxsteps_;
};

}  // namespace velmora::test

#include "support/sectiontable.h"

namespace velmora::test {

// The rows of a section of data/statements.txt (its head says how each kind reads).
inline std::vector<TableRow> statementrows(const std::string& section) {
    return tablerows("statements.txt", section);
}

// A declarations cell: "$NAME" stands for that row of [Declarations].
inline std::string declarations(const std::string& cell) {
    if (!cell.starts_with("$")) return cell;
    for (const TableRow& row : statementrows("Declarations"))
        if (row[0] == cell.substr(1)) return row[1];
    ADD_FAILURE() << "no declarations " << cell;
    return "";
}

inline void expectcoderows(const std::string& section) {
    for (const TableRow& row : statementrows(section)) {
        const BasicCompileResult result = compilebasic(declarations(row[1]) + row[2] + "\r\n", row[0]);
        EXPECT_TRUE(result.ok) << row.where << ": " << result.error;
        EXPECT_EQ(rowcode(result, row[2]), row[3]) << row.where;
    }
}

inline void expectroutinerows(const std::string& section) {
    for (const TableRow& row : statementrows(section)) {
        const size_t colon = row[0].find(':');
        BasicModel model = basicmodel(row[0].substr(0, colon));
        if (colon != std::string::npos) model.adcclass = std::stoi(row[0].substr(colon + 1));
        const BasicCompileResult result = basiccompile(row[1] + "\r\n", model, CompileOptions{});
        EXPECT_TRUE(result.ok) << row.where << ": " << result.error;
        EXPECT_EQ(routine(result, row[2]), row[3]) << row.where;
    }
}

inline void expectmessagerows(const std::string& section) {
    for (const TableRow& row : statementrows(section)) {
        const BasicCompileResult result = compilebasic(declarations(row[1]) + row[2], row[0]);
        EXPECT_EQ(result.ok, row[3].empty()) << row.where << " gave " << result.error;
        EXPECT_TRUE(result.error.ends_with(row[3])) << row.where << " gave " << result.error;
        EXPECT_EQ(result.asmtext.empty(), !result.ok) << row.where;
    }
}

inline void expectsentrows(const std::string& section) {
    for (const TableRow& row : statementrows(section))
        EXPECT_EQ(BasicRun(declarations(row[0]) + row[1] + "\r\nEnd", "ATmega32", 5000000).sent, row[2]) << row.where;
}

// The address of a declared variable, from its equate line.
inline int equaddress(const std::string& asmtext, const std::string& name) {
    const std::string key = ".EQU    " + name + " = 0x";
    const size_t at = asmtext.find(key);
    EXPECT_NE(at, std::string::npos) << name;
    return at == std::string::npos ? 0 : std::stoi(asmtext.substr(at + key.size()), nullptr, 16);
}

// The value of `name` after running the program on the ATmega32.
inline uint32_t runvalue(const std::string& source, const std::string& name) {
    const BasicCompileResult compiled = compilebasic(source);
    EXPECT_TRUE(compiled.ok) << compiled.error;
    const BasicRun run(source, "ATmega32");
    const auto among = [&name](const char* letters) { return std::string(letters).find(name[0]) != std::string::npos; };
    const int bytes = among("vwp") ? 2 : among("lm") ? 4 : 1;
    return run.value(equaddress(compiled.asmtext, name), bytes);
}

inline void expectvaluerows(const std::string& section) {
    for (const TableRow& row : statementrows(section))
        EXPECT_EQ(runvalue(declarations(row[0]) + row[1] + "\r\nEnd", row[2]), static_cast<uint32_t>(row.number(3)))
            << row.where;
}

}  // namespace velmora::test
