#pragma once

#include <QObject>

#include <memory>

namespace testsupport {

// Adds a test class to the program that it is linked into. Call before main() only; the name is the class's own.
void addTest(const QMetaObject& test, std::unique_ptr<QObject> (*make)());

// Stands once behind each test class:
//     static const testsupport::RunnableTest<HexTextTest> kRunnable;
template <typename Test>
class RunnableTest final
{
public:
    RunnableTest()
    {
        addTest(Test::staticMetaObject, [] { return std::unique_ptr<QObject>(std::make_unique<Test>()); });
    }
};

// Runs the test classes of this program.
//     PROGRAM                       all of them
//     PROGRAM CLASS [ARGUMENT...]   one; the arguments are those of Qt Test: function names, -functions, -o FILE,FORMAT
//     PROGRAM -classes              prints their names
// Returns how many functions failed, at most 127; 2 for a class that this program does not hold.
[[nodiscard]] int runTests(int argc, char* argv[]);

} // namespace testsupport
