// Runs every test object of the windows in one program.

#include <QApplication>
#include <QTest>
#include <clocale>
#include <memory>
#include <vector>

#include "uifixture.h"

namespace velmora::test {
namespace {
std::vector<UiTestFactory>& factories() {
    static std::vector<UiTestFactory> list;
    return list;
}
}  // namespace

int registeruitest(UiTestFactory factory) {
    factories().push_back(factory);
    return static_cast<int>(factories().size());
}

}  // namespace velmora::test

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    int failures = 0;
    for (auto factory : velmora::test::factories()) {
        std::unique_ptr<QObject> test(factory());
        failures += QTest::qExec(test.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
