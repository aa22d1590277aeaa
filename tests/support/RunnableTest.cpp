#include "tests/support/RunnableTest.h"

#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace testsupport {

namespace {

struct KnownTest
{
    const QMetaObject* test;
    std::unique_ptr<QObject> (*make)();

    [[nodiscard]] const char* name() const { return test->className(); }
};

std::vector<KnownTest>& knownTests()
{
    static std::vector<KnownTest> tests;
    return tests;
}

int runAll(char* program)
{
    int failures = 0;
    for (const KnownTest& test : knownTests()) {
        failures += QTest::qExec(test.make().get(), 1, &program);
    }
    return failures;
}

int runOne(const char* name, int argc, char* argv[])
{
    for (const KnownTest& test : knownTests()) {
        if (std::strcmp(test.name(), name) == 0) {
            return QTest::qExec(test.make().get(), argc, argv);
        }
    }
    std::fprintf(stderr, "There is no test class %s in this program; -classes prints those that there are.\n", name);
    return 2;
}

} // namespace

void addTest(const QMetaObject& test, std::unique_ptr<QObject> (*make)())
{
    knownTests().push_back({&test, make});
}

int runTests(int argc, char* argv[])
{
    // The order in which files are linked says nothing to a reader.
    std::ranges::sort(knownTests(),
                      [](const KnownTest& a, const KnownTest& b) { return std::strcmp(a.name(), b.name()) < 0; });
    if (argc < 2) {
        return std::min(runAll(argv[0]), 127);
    }
    const char* const name = argv[1];
    if (std::strcmp(name, "-classes") == 0) {
        for (const KnownTest& test : knownTests()) {
            std::puts(test.name());
        }
        return 0;
    }
    argv[1] = argv[0]; // what is left are the program's name and the arguments of Qt Test
    return std::min(runOne(name, argc - 1, argv + 1), 127);
}

} // namespace testsupport
