#pragma once
// Hand-made model files for the loader tests, written into a private temporary folder.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "models/modelfile.h"

namespace velmora::test {

// A folder that lives as long as the test.
class TempDir {
public:
    TempDir() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        path_ = std::filesystem::temp_directory_path() /
                ("velmora-models-" + std::string(info->test_suite_name()) + "-" + info->name() + "-" +
                 std::to_string(::getpid()));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    std::string path() const { return path_.string(); }
    void write(const std::string& filename, const std::string& text) const {
        std::ofstream(path_ / filename, std::ios::binary) << text;
    }

private:
    std::filesystem::path path_;
};

// A small ATmega8-like model; register addresses and bits as in avr-libc's iom8.h. Tests
// change single sections and put the file together with text().
struct ModelText {
    std::string lead = "\n";
    std::string keys =
        "pins: 8\n"
        "flash: 8192\n"
        "extendedio: 0\n"
        "sram: 1024\n"
        "eeprom: 512\n"
        "simconf: 1\n"
        "instsetconf: 3\n"
        "intconf: 2,2\n"
        "compconf: 2,1,6,7\n"
        "adcconf: 2\n"
        "eeconf: 2\n"
        "uartconf: 2\n";
    std::string registers =
        "20,XXXX,00,A5\n"
        "24,ADCL,00,00\n"
        "25,ADCH,00,00\n"
        "26,ADCSRA,00,FF\n"
        "27,ADMUX,00,EF\n"
        "28,ACSR,00,DF\n"
        "29,UBRRL,00,FF\n"
        "2A,UCSRB,00,FF\n"
        "2B,UCSRA,20,43\n"
        "2C,UDR,00,FF\n"
        "30,PIND,00,00\n"
        "31,DDRD,00,FF\n"
        "32,PORTD,00,FF\n"
        "36,PINB,00,00\n"
        "37,DDRB,00,FF\n"
        "38,PORTB,00,FF\n"
        "3C,EECR,00,0F\n"
        "3D,EEDR,00,FF\n"
        "3E,EEARL,00,FF\n"
        "3F,EEARH,00,01\n"
        "55,MCUCR,00,FF\n"
        "57,SPMCR,00,FF\n"
        "5A,GIFR,00,C0\n"
        "5B,GICR,00,C3\n"
        "5D,SPL,00,FF\n"
        "5E,SPH,00,07\n"
        "5F,SREG,00,FF\n";
    std::string definitions =
        ".equ ADCL = $04\n"
        ".equ ADCH = $05\n"
        ".equ ADCSRA = $06\n"
        ".equ ADMUX = $07\n"
        ".equ ACSR = $08\n"
        ".equ UBRRL = $09\n"
        ".equ UCSRB = $0A\n"
        ".equ UCSRA = $0B\n"
        ".equ UDR = $0C\n"
        ".equ PIND = $10\n"
        ".equ DDRD = $11\n"
        ".equ PORTD = $12\n"
        ".equ PINB = $16\n"
        ".equ DDRB = $17\n"
        ".equ PORTB = $18\n"
        ".equ EECR = $1C\n"
        ".equ EEDR = $1D\n"
        ".equ EEARL = $1E\n"
        ".equ EEARH = $1F\n"
        ".equ MCUCR = $35\n"
        ".equ SPMCR = $37\n"
        ".equ GIFR = $3A\n"
        ".equ GICR = $3B\n"
        ".equ SPL = $3D\n"
        ".equ SPH = $3E\n"
        ".equ SREG = $3F\n";
    std::string bits =
        "; SREG - Status Register\n"
        ".equ SREG_C = 0\n"
        ".equ SREG_Z = 1\n"
        ".equ SREG_I = 7\n"
        "; PORTB - Port B Data Register\n"
        ".equ PB0 = 0\n"
        ".equ PB3 = 3\n"
        "; TIMSK - Timer/Counter Interrupt Mask Register\n"
        ".equ TOIE0 = 0\n"
        "; GICR - General Interrupt Control Register\n"
        ".equ INT0 = 6\n"
        ".equ INT1 = 7\n"
        "; DDRB - Port B Data Direction Register\n"
        ".equ DDB0 = 0\n"
        "; GIFR - General Interrupt Flag Register\n"
        ".equ INTF0 = 6\n"
        ".equ INTF1 = 7\n"
        "; PINB - Port B Input Pins\n"
        ".equ PINB0 = 0\n"
        "; EECR - EEPROM Control Register\n"
        ".equ EERE = 0\n"
        ".equ EEWE = 1\n"
        ".equ EEMWE = 2\n"
        ".equ EERIE = 3\n";
    std::string interrupts =
        "RESET,0000,Reset,,\n"
        "INT0,0001,External Interrupt Request 0,GICR.6,GIFR.6\n"
        "INT1,0002,External Interrupt Request 1,GICR.7,GIFR.7\n"
        "ERDY,000F,EEPROM Ready,EECR.3,EECR.1\n"
        "SPMR,0012,Store Program Memory Ready,SPMCR.7,SPMCR.0\n";
    std::string pins =
        "1,PB5 (SCK),b,5,x,1\n"
        "2,PB3 (MOSI/OC2),b,3,x,1\n"
        "3,PC0 (ADC0),c,0,0,2\n"
        "4,GND,x,x,x,0\n"
        "5,PD2 (INT0),d,2,x,1\n"
        "6,ADC6,x,x,6,2\n"
        "7,PB4 (MISO),b,4,x,1\n"
        "8,VCC,x,x,x,0\n";

    std::string text() const {
        return lead + "***** Section 0 *****\n" + keys + "***** Section 1 *****\n" + registers +
               "***** Section 2 *****\n" + definitions + "***** Section 3 *****\n" + bits +
               "***** Section 4 *****\n" + interrupts + "***** Section 5 *****\n" + pins;
    }
};

// The 1-based number of the line of `text` that contains `needle`, or 0.
inline int linenumberof(const std::string& text, const std::string& needle) {
    int number = 1;
    size_t start = 0;
    for (;;) {
        const size_t end = text.find('\n', start);
        const std::string line = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (line.find(needle) != std::string::npos) return number;
        if (end == std::string::npos) return 0;
        start = end + 1;
        ++number;
    }
}

// Writes `text` as "<lower-case name>.cfg" and loads it.
struct LoadedModel {
    Machine m;
    ModelDefinitions definitions;
    ModelLoadResult result;
};

inline void loadtext(LoadedModel& model, const TempDir& dir, const std::string& text,
                     const ModelOptions& options = {}, const std::string& name = "ATmini8") {
    std::string filename;
    for (char c : name) filename.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
    dir.write(filename + ".cfg", text);
    model.result = modelload(dir.path(), name, options, model.m, model.definitions);
}

}  // namespace velmora::test
