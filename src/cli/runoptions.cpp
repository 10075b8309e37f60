#include "cli/runoptions.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "cli/options.h"
#include "cli/vcdtrace.h"
#include "core/peripheraltimes.h"

namespace velmora {

namespace {

int hexdigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Splits "BODY@CYCLE" into the body and the cycle (0 without "@").
bool splitcycle(const std::string& text, std::string& body, uint64_t& cycle) {
    const size_t at = text.find('@');
    body = text.substr(0, at);
    cycle = 0;
    if (at == std::string::npos) return true;
    const auto parsed = parsedecimal(text.substr(at + 1));
    if (!parsed) return false;
    cycle = *parsed;
    return true;
}

// Word addresses as the listings show them: hexadecimal, with or without "$" or "0x".
// A name as C and the assembler spell them: a letter, '_' or '.', then letters, digits, '_', '.' or '$'.
bool issymbolname(const std::string& text) {
    if (text.empty() || !(std::isalpha(static_cast<unsigned char>(text[0])) || text[0] == '_' || text[0] == '.'))
        return false;
    for (const char c : text)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_' && c != '.' && c != '$') return false;
    return true;
}

std::optional<int32_t> parsewordaddress(std::string text) {
    if (!text.empty() && text[0] == '$') text.erase(0, 1);
    else if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) text.erase(0, 2);
    if (text.empty() || text.size() > 6) return std::nullopt;
    uint32_t value = 0;
    for (char c : text) {
        const int d = hexdigit(c);
        if (d < 0) return std::nullopt;
        value = value * 16 + static_cast<uint32_t>(d);
    }
    if (value > 0x3FFFFF) return std::nullopt;
    return static_cast<int32_t>(value);
}

}  // namespace

std::optional<uint64_t> parsedecimal(const std::string& text) {
    if (text.empty() || text.size() > 19) return std::nullopt;
    uint64_t value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + static_cast<uint64_t>(c - '0');
    }
    return value;
}

std::optional<std::string> unescape(const std::string& text, std::string& error) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
            continue;
        }
        if (++i >= text.size()) {
            error = "a lone \\ at the end";
            return std::nullopt;
        }
        switch (text[i]) {
        case 'n': bytes += '\n'; break;
        case 'r': bytes += '\r'; break;
        case 't': bytes += '\t'; break;
        case '0': bytes += '\0'; break;
        case '\\': bytes += '\\'; break;
        case 'x': {
            int value = 0, digits = 0;
            while (digits < 2 && i + 1 < text.size() && hexdigit(text[i + 1]) >= 0) {
                value = value * 16 + hexdigit(text[++i]);
                ++digits;
            }
            if (digits == 0) {
                error = "\\x needs one or two hexadecimal digits";
                return std::nullopt;
            }
            bytes += static_cast<char>(value);
            break;
        }
        default:
            error = std::string("unknown escape \\") + text[i] + " (known: \\n \\r \\t \\0 \\\\ \\xHH)";
            return std::nullopt;
        }
    }
    return bytes;
}

std::optional<ScheduledInput> parsepininput(const std::string& text, std::string& error) {
    error = "--pin '" + text + "': expected PORTx.BIT=0|1[@CYCLE], for example PORTB.0=1@1000";
    std::string body;
    ScheduledInput input;
    input.text = text;
    if (!splitcycle(text, body, input.cycle)) return std::nullopt;
    // PORTx.b=v: exactly nine characters.
    if (body.size() != 9 || body[5] != '.' || body[7] != '=') return std::nullopt;
    std::string prefix = body.substr(0, 4);
    std::transform(prefix.begin(), prefix.end(), prefix.begin(), [](unsigned char c) { return std::toupper(c); });
    const char port = static_cast<char>(std::toupper(static_cast<unsigned char>(body[4])));
    if (prefix != "PORT" || port < 'A' || port > 'G') return std::nullopt;
    if (body[6] < '0' || body[6] > '7' || (body[8] != '0' && body[8] != '1')) return std::nullopt;
    input.kind = ScheduledInput::Kind::Pin;
    input.portcode = 5 + (port - 'A');
    input.bit = body[6] - '0';
    input.value = body[8] - '0';
    error.clear();
    return input;
}

std::optional<ScheduledInput> parseanaloginput(const std::string& text, std::string& error) {
    error = "--analog '" + text + "': expected CHANNEL=VALUE[@CYCLE] with CHANNEL 0-15 and VALUE 0-1023, "
            "for example 3=512@1000";
    std::string body;
    ScheduledInput input;
    input.text = text;
    if (!splitcycle(text, body, input.cycle)) return std::nullopt;
    const size_t equals = body.find('=');
    if (equals == std::string::npos) return std::nullopt;
    const auto channel = parsedecimal(body.substr(0, equals));
    const auto value = parsedecimal(body.substr(equals + 1));
    if (!channel || !value || *channel > 15 || *value > 1023) return std::nullopt;
    input.kind = ScheduledInput::Kind::Analog;
    input.channel = static_cast<int>(*channel);
    input.value = static_cast<int>(*value);
    error.clear();
    return input;
}

const CommandText& runtext() {
    static constexpr CommandText kRun = {
        "run", "[OPTIONS] FILE",
        "Runs FILE on the simulated microcontroller until it sleeps or stops. FILE is an Intel\n"
        "HEX file (.hex), an assembler source (.asm, assembled first as 'velmora-cli asm' does,\n"
        "in a temporary folder), a BASIC source (.bas, compiled and assembled for the model and\n"
        "clock of the run as 'velmora-cli basic --assemble' does, in a temporary folder; a\n"
        "'Define CLOCK_FREQUENCY' in it sets the run's clock, over --clock), or else a text file\n"
        "of hexadecimal words (';' for comments).\n"
        "Every byte the USART sends is written to stdout as it is sent, unchanged; messages go to\n"
        "stderr. When the run ends (SLEEP, a limit, a breakpoint or a fault), the transmitter\n"
        "first finishes what the program wrote to UDR: the byte shifting out and the one waiting\n"
        "behind it are written too. That takes no simulated time: the summary's cycles and the\n"
        "dump's counters are those at the stop.\n"
        "Then, on stdout and each on a line of its own: the state of every wired device (for\n"
        "--lcd: 'lcd:', the rows between '|' marks with '?' for a user character, one line with\n"
        "the dots of each user character shown, and 'ERROR: ...' when a byte came while the module\n"
        "was busy and was dropped), the --watch values, and last the dump.\n"
        "options:\n"
        "  --model NAME            microcontroller model ('velmora-cli models' lists them)\n"
        "  --clock MHZ             clock frequency in MHz (default 4)\n"
        "  --max-cycles N          stop once N clock cycles have passed\n"
        "  --max-instructions N    stop once N instructions have run\n"
        "  --break ADDRESS|NAME    stop when PC reaches this hexadecimal word address, or the\n"
        "                          function of that name in an ELF program (repeatable)\n"
        "  --infinite-loop-stop    stop at a jump to itself\n"
        "  --uart-in TEXT          bytes for the USART receiver; escapes \\n \\r \\t \\0 \\\\ \\xHH\n"
        "  --uart-in-file PATH     the bytes of a file for the USART receiver\n"
        "                          (both repeatable; the bytes queue up in command-line order and\n"
        "                          enter the receiver one by one while it is enabled and free)\n"
        "  --uart-time US          time of one USART byte either way in microseconds, 50-100000\n"
        "                          (default 1000)\n"
        "  --pin PORTx.BIT=0|1[@CYCLE]\n"
        "                          drive an input pin from the given clock cycle on (default 0);\n"
        "                          repeatable, e.g. --pin PORTD.2=0@5000\n"
        "  --analog CH=VALUE[@CYCLE]\n"
        "                          put ADC channel CH (0-15) in analog mode with VALUE (0-1023)\n"
        "                          from the given clock cycle on; repeatable\n"
        "  --vcd PATH              write every change of the pins' levels with its time to PATH as\n"
        "                          a Value Change Dump (GTKWave, sigrok); the time unit is the\n"
        "                          coarsest in which one clock cycle is a whole number of units\n"
        "  --vcd-pins LIST         the pins to trace, e.g. PORTB,PORTD.2 (default: every pin of\n"
        "                          every port of the model)\n"
        "  --lcd SETUP             wire a character LCD module (HD44780) to the pins; SETUP is a\n"
        "                          comma-separated list, e.g. 2x16,d=PORTB.4,rs=PORTB.3,e=PORTB.2\n"
        "                          (the defaults): type 1x16 2x16 4x16 2x20 4x20 2x24 2x40;\n"
        "                          D=PORTx or PORTx.4 (high nibble), PORTx.0 (low); 4BIT, 8BIT;\n"
        "                          RS=, E=, RW=PORTx.BIT (R/W not connected unless given);\n"
        "                          INIT=, CMD=, DATA= busy times in us, 20-5000 (1640, 42, 46);\n"
        "                          BAS=FILE takes the wiring from a BASIC program's Define lines\n"
        "  --device-log PATH       write one line per change of the wired devices to PATH:\n"
        "                          CYCLE<tab>DEVICE<tab>WHAT, e.g. 52114<tab>lcd<tab>data 48\n"
        "  --trace-basic PATH      write the BASIC line of every statement the program reaches to\n"
        "                          PATH: CYCLE<tab>LINE, a line again only after another one; for\n"
        "                          a .bas, or a .hex with its .bas, .asm and .lst beside it\n"
        "  --watch NAME            at the end print NAME = VALUE (decimal) for a variable of a\n"
        "                          program compiled from BASIC (Bit, Byte, Word, Long, array\n"
        "                          elements as a(0), a(1), ...), a named register of the model or\n"
        "                          R0-R31; repeatable; in the JSON dump as \"watch\":{NAME:VALUE}\n"
        "  --gdb PORT              start the program stopped and serve avr-gdb on 127.0.0.1:PORT\n"
        "                          (target remote :PORT; 0 takes a free port, named on stderr)\n"
        "                          until it detaches (the program then runs on to its end) or\n"
        "                          kills it; gdb sets the breakpoints then, --break has none\n"
        "  --dump                  at the end print R0-R31, SREG, SP, PC, every named I/O register\n"
        "                          and the EEPROM rows that are not erased\n"
        "  --dump-format text|json the dump as text (default) or as one line of JSON after the\n"
        "                          output (all of the EEPROM); implies --dump\n"
        "  --help                  this text\n"
        "Inputs act between two instructions, at the first one that ends at or after CYCLE.\n"
        "exit codes: 0 SLEEP, 2 usage error, 3 input file or model error, 4 unrecognized\n"
        "instruction, 5 ran off the end of program memory, 6 infinite loop, 7 cycle or instruction\n"
        "limit, 8 breakpoint, 9 stopped otherwise (BREAK, stack fault)\n"};
    return kRun;
}

std::optional<RunOptions> parserunoptions(const std::vector<std::string>& args, std::string& error) {
    std::vector<std::string> valued = {"--model", "--clock", "--max-cycles", "--max-instructions", "--break",
                                       "--uart-in", "--uart-in-file", "--uart-time", "--pin", "--analog", "--vcd",
                                       "--vcd-pins", "--dump-format", "--device-log", "--trace-basic",
                                       "--watch", "--gdb"};
    for (const DeviceKind& kind : devicekinds()) valued.push_back(kind.option);
    const ParsedArgs parsed = parseargs(args, valued, {"--dump", "--infinite-loop-stop"});
    RunOptions o;
    o.help = parsed.help;
    if (o.help) return o;
    if (!parsed.error.empty()) {
        error = parsed.error;
        return std::nullopt;
    }
    if (parsed.positional.size() != 1) {
        error = parsed.positional.empty() ? "no program file given" : "more than one program file given";
        return std::nullopt;
    }
    o.file = parsed.positional[0];
    o.model = parsed.value("--model");
    o.clock = parsed.value("--clock");
    o.dump = parsed.has("--dump");
    o.vcd = parsed.value("--vcd").value_or("");
    if (const auto format = parsed.value("--dump-format")) {
        if (*format != "text" && *format != "json") {
            error = "--dump-format '" + *format + "': expected text or json";
            return std::nullopt;
        }
        o.dump = true;
        o.dumpjson = *format == "json";
    }
    o.infiniteloopstop = parsed.has("--infinite-loop-stop");
    for (const auto& [name, value] : parsed.ordered) {
        if (name == "--max-cycles" || name == "--max-instructions") {
            const auto count = parsedecimal(value);
            if (!count) {
                error = name + " '" + value + "' is not a count";
                return std::nullopt;
            }
            (name == "--max-cycles" ? o.maxcycles : o.maxinstructions) = *count;
        } else if (name == "--break") {
            const auto address = parsewordaddress(value);
            if (!address && !issymbolname(value)) {
                error = "--break '" + value + "' is neither a hexadecimal word address nor a function's name";
                return std::nullopt;
            }
            o.breakpoints.push_back({value, address});
        } else if (name == "--uart-in") {
            std::string why;
            const auto bytes = unescape(value, why);
            if (!bytes) {
                error = "--uart-in '" + value + "': " + why;
                return std::nullopt;
            }
            o.uartin.push_back({false, *bytes});
        } else if (name == "--watch") {
            if (value.empty()) {
                error = "--watch needs a variable or register name";
                return std::nullopt;
            }
            o.watches.push_back(value);
        } else if (name == "--gdb") {
            const auto port = parsedecimal(value);
            if (!port || *port > 65535) {
                error = "--gdb '" + value + "' is not a TCP port (0-65535)";
                return std::nullopt;
            }
            o.gdbport = static_cast<int>(*port);
        } else if (name == "--uart-in-file") {
            o.uartin.push_back({true, value});
        } else if (name == "--uart-time") {
            const PeripheralTime& range = uarttime();
            const auto us = parsedecimal(value);
            if (!us || *us < static_cast<uint64_t>(range.low) || *us > static_cast<uint64_t>(range.high)) {
                error = "--uart-time '" + value + "': " + allowedrange(range);
                return std::nullopt;
            }
            o.uarttime = static_cast<float>(*us);
        } else if (name == "--vcd-pins") {
            for (size_t from = 0; from <= value.size();) {
                const size_t comma = std::min(value.find(',', from), value.size());
                const std::string item = value.substr(from, comma - from);
                const auto selection = parsepinselection(item);
                if (!selection) {
                    error = "--vcd-pins '" + item + "': expected PORTx or PORTx.BIT, for example PORTB,PORTD.2";
                    return std::nullopt;
                }
                o.vcdpins.push_back(*selection);
                from = comma + 1;
            }
        } else if (name == "--pin" || name == "--analog") {
            const auto input = name == "--pin" ? parsepininput(value, error) : parseanaloginput(value, error);
            if (!input) return std::nullopt;
            o.inputs.push_back(*input);
        } else if (const DeviceKind* kind = devicekind(name)) {
            // The desktop program has one window of each device; a second one would share its log name.
            const auto same = [kind](const DeviceRequest& r) { return r.kind == kind; };
            if (std::any_of(o.devices.begin(), o.devices.end(), same)) {
                error = name + " given twice: one such device per run";
                return std::nullopt;
            }
            std::string why;
            if (!kind->check(value, why)) {
                error = name + " " + why;
                return std::nullopt;
            }
            o.devices.push_back({kind, value});
        }
    }
    if (const auto log = parsed.value("--device-log")) {
        if (o.devices.empty()) {
            error = "--device-log '" + *log + "': no device to log; wire one with " + deviceoptionnames();
            return std::nullopt;
        }
        if (log->empty()) {
            error = "--device-log needs a file name";
            return std::nullopt;
        }
        o.devicelog = *log;
    }
    if (const auto trace = parsed.value("--trace-basic")) {
        if (trace->empty()) {
            error = "--trace-basic needs a file name";
            return std::nullopt;
        }
        o.tracebasic = *trace;
    }
    std::stable_sort(o.inputs.begin(), o.inputs.end(),
                     [](const ScheduledInput& a, const ScheduledInput& b) { return a.cycle < b.cycle; });
    return o;
}

}  // namespace velmora
