#include "tests/support/RunnableTest.h"

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using TestApplication = QApplication;
#else
#include <QCoreApplication>
using TestApplication = QCoreApplication;
#endif

int main(int argc, char* argv[])
{
    const TestApplication application(argc, argv);
    return testsupport::runTests(argc, argv);
}
