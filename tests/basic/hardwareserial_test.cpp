// The hardware UART statements: programs that print over the USART of each kind of model,
// the baud divisor worked out by hand, and the messages.

#include "basicfixture.h"

namespace velmora::test {
namespace {

TEST(BasicHardwareSerial, ProgramsPrintOnEveryKindOfUsart) {
    const std::string hello = "Hseropen 9600\r\nHserout \"Hello, world\", CrLf\r\nEnd";
    for (const char* model : {"ATmega32", "ATmega328P", "ATtiny2313", "AT90S2313", "ATmega128", "ATmega162"}) {
        SCOPED_TRACE(model);
        EXPECT_EQ(BasicRun(hello, model).sent, "Hello, world\r\n");
    }
}

TEST(BasicHardwareSerial, ItemsSendTheirBytes) {
    const std::string d = "Dim a As Byte\r\nDim w As Word\r\nDim l As Long\r\nHseropen\r\n";
    const std::pair<const char*, std::string> cases[] = {
        {"w = 1234\r\na = 0\r\nHserout #w, \",\", #a, Lf", "1234,0\n"},
        {"w = 65535\r\nHserout #w, \" \", #7, \" \", #100", "65535 7 100"},
        {"a = 65\r\nHserout a, 66, \"C\"", "ABC"},
        {"w = 0x4241\r\nHserout w", "AB"},
        {"l = 0x44434241\r\nHserout l", "ABCD"},
        {"Hserget a\r\nHserout #a", "0"},
    };
    for (const auto& [rows, expected] : cases) {
        SCOPED_TRACE(rows);
        EXPECT_EQ(BasicRun(d + rows + "\r\nEnd", "ATmega32").sent, expected);
    }
}

TEST(BasicHardwareSerial, DivisorComesNearestTheRate) {
    struct Case {
        const char* model;
        double mhz;
        const char* baud;
        const char* comments;
    };
    const Case cases[] = {
        {"ATmega32", 8, "9600", "Exact baud rate: 9615|Baud rate error: 15 (0.15%)|UBRR 51 0"},
        // 4 MHz / 16 / 2 = 125000 at normal speed; double speed only equals it.
        {"ATmega32", 4, "115200", "Exact baud rate: 125000|Baud rate error: 9800 (8.50%)|UBRR 1 0"},
        // 58824 at normal speed (n = 16) loses to 16 MHz / 8 / 35 = 57143 at double speed.
        {"ATmega32", 16, "57600", "Exact baud rate: 57143|Baud rate error: 457 (0.79%)|UBRR 34 2"},
        // The classic UART's divisor stops at 255: 4 MHz / 16 / 256 = 977.
        {"AT90S2313", 4, "300", "Exact baud rate: 977|Baud rate error: 677 (225.%)|UBRR 255 0"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.model) + " " + c.baud);
        BasicModel model = basicmodel(c.model);
        model.clockmhz = c.mhz;
        const std::string source = std::string("Define ALLOW_ALL_BAUDRATES = 1\r\nHseropen ") + c.baud;
        const BasicCompileResult result = basiccompile(source, model, {});
        ASSERT_TRUE(result.ok) << result.error;
        std::string found;
        int ldi = 0, divisor = 0, status = -1;
        for (const std::string& line : asmlines(result.asmtext)) {
            if (line.starts_with(";       ")) found += line.substr(8) + "|";
            if (!line.starts_with("\tLDI R16,0x") || line.find("RAMEND") != std::string::npos) continue;
            const int value = std::stoi(line.substr(11), nullptr, 16);
            if (ldi == 0) divisor = value;
            if (ldi == 1 && std::string(c.model) != "AT90S2313") divisor += value << 8;
            if (ldi == 2 && std::string(c.model) != "AT90S2313") status = value - 64;
            if (ldi == 1 && std::string(c.model) == "AT90S2313") status = 0;
            ++ldi;
        }
        EXPECT_EQ(found + "UBRR " + std::to_string(divisor) + " " + std::to_string(status), c.comments);
    }
}

TEST(BasicHardwareSerial, MisusesStopWithTheirMessages) {
    const std::string d = "Dim a As Byte\r\nDim w As Word\r\n";
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"ATmega32", "Hserout a", "Error in line 3: Hardware UART port must be opened first with HSEROPEN statement."},
        {"ATmega32", "Hseropen\r\nHseropen", "Error in line 4: HSEROPEN statement may appear only once."},
        {"ATmega32", "Define ALLOW_MULTIPLE_HSEROPEN = 1\r\nHseropen\r\nHseropen 19200", ""},
        {"ATtiny13", "Hseropen", "Error in line 3: Hardware UART not available for the selected device."},
        {"ATmega32", "Hseropen a", "Error in line 3: Baud Rate argument must be a constant."},
        {"ATmega32", "Hseropen 9601",
         "Error in line 3: Invalid Baud Rate specified. Use 300, 600, 1200, 2400, 4800, 9600, 14400, 19200, 28800, "
         "31250, 38400, 56000 or 57600."},
        {"ATmega32", "Define ALLOW_ALL_BAUDRATES = 1\r\nHseropen 99", "Error in line 4: Invalid Baud Rate specified."},
        {"ATmega32", "Hseropen\r\nHserget w", "Error in line 4: HSERGET argument must be Byte variable."},
        {"ATmega32", "Hseropen\r\nHserin #a", "Error in line 4: Decimal input (#) not supported."},
        {"ATmega32", "Hseropen\r\nHserin a, 5", "Error in line 4: Incorrect argument."},
        {"ATmega32", "Hseropen\r\nHserin a, w", ""},
    };
    for (const auto& [model, rows, expected] : cases) EXPECT_EQ(compilebasic(d + rows, model).error, expected) << rows;
}

}  // namespace
}  // namespace velmora::test

namespace velmora::test {
namespace {

TEST(BasicLongArithmetic, ProductsQuotientsAndDecimalsOnTheSimulator) {
    const std::string d = "Dim l As Long\r\nDim m As Long\r\nDim r As Long\r\nHseropen\r\nl = 123456789\r\nm = 1000\r\n";
    const std::pair<const char*, const char*> cases[] = {
        {"r = l * m\r\nHserout #r", "3197704712"},     // 123456789000 mod 2^32
        {"r = l / m\r\nHserout #r", "123456"},
        {"r = l Mod m\r\nHserout #r", "789"},
        {"r = m * 3 + l\r\nHserout #r", "123459789"},
        {"r = 4294967295\r\nHserout #r, \",\", #m", "4294967295,1000"},
        {"r = 0\r\nHserout #r", "0"},
        {"r = l / 0\r\nHserout #r", "4294967295"},
    };
    for (const auto& [rows, expected] : cases) {
        SCOPED_TRACE(rows);
        EXPECT_EQ(BasicRun(d + rows + "\r\nEnd", "ATmega32", 5000000).sent, expected);
    }
}

}  // namespace
}  // namespace velmora::test
