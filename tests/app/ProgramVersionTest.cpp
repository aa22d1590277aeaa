#include "app/startup/ProgramVersion.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using app::ProgramVersion;

class ProgramVersionTest final : public QObject
{
    Q_OBJECT

private slots:
    void thisBuild()
    {
        const ProgramVersion version = app::programVersion();
        QCOMPARE(version.majorNumber, 1);
        QCOMPARE(version.minorNumber, 4);
        QCOMPARE(version.revision, 1);
    }

    void allForms_data()
    {
        QTest::addColumn<QList<int>>("numbers");
        QTest::addColumn<QByteArray>("about");
        QTest::addColumn<QByteArray>("splash");
        QTest::addColumn<QByteArray>("commandLine");
        const auto row = [](QList<int> numbers, const char* about, const char* splash, const char* commandLine) {
            QTest::newRow(about) << numbers << QByteArray(about) << QByteArray(splash) << QByteArray(commandLine);
        };
        row({1, 4, 1}, "Version: 1.04.0001", "Version 01.04.0001", "TeslinConfigure 1.4.1");
        row({0, 0, 0}, "Version: 0.00.0000", "Version 00.00.0000", "TeslinConfigure 0.0.0");
        row({12, 34, 5678}, "Version: 12.34.5678", "Version 12.34.5678", "TeslinConfigure 12.34.5678");
        row({2, 10, 99}, "Version: 2.10.0099", "Version 02.10.0099", "TeslinConfigure 2.10.99");
        // In the windows longer numbers keep their last digits, but for the first one of the about box.
        row({123, 456, 78901}, "Version: 123.56.8901", "Version 23.56.8901", "TeslinConfigure 123.456.78901");
    }
    void allForms()
    {
        QFETCH(QList<int>, numbers);
        QFETCH(QByteArray, about);
        QFETCH(QByteArray, splash);
        QFETCH(QByteArray, commandLine);
        const ProgramVersion version{.majorNumber = numbers[0], .minorNumber = numbers[1], .revision = numbers[2]};
        QCOMPARE(app::versionInAbout(version), about.toStdString());
        QCOMPARE(app::versionOnSplash(version), splash.toStdString());
        QCOMPARE(app::versionOnCommandLine(version), commandLine.toStdString());
    }
};

static const testsupport::RunnableTest<ProgramVersionTest> kRunnable;
#include "ProgramVersionTest.moc"
