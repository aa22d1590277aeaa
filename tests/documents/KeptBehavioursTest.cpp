#include "tests/documents/KeptBehaviours.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QFile>
#include <QTest>

using namespace documents;

// Every kept behaviour is told to users, marked in the code and pinned by a test.
class KeptBehavioursTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyOneStandsInDocumentCodeAndTest()
    {
        const KeptBehaviours kept = keptBehaviours();
        QVERIFY2(kept.told.size() > 50, qPrintable(QString::number(kept.told.size())));
        QCOMPARE(kept.faults().join(u'\n'), "");
    }

    void everyEntryTellsLossRemedyAndReason()
    {
        QFile document(testsupport::sourceFile(QStringLiteral("docs/kept-behaviours.md")));
        QVERIFY(document.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(document.readAll());
        QCOMPARE(faultsOfEntries(text).join(u'\n'), "");
        QCOMPARE(namesOfEntries(text).size(), text.count(QStringLiteral("\n### ")));
    }

    // --- That the check itself can fail ---

    void aNameThatIsMissingSomewhere_data()
    {
        QTest::addColumn<QStringList>("told");
        QTest::addColumn<QStringList>("inCode");
        QTest::addColumn<QStringList>("atTests");
        QTest::addColumn<QString>("faults");
        const QStringList both = {"kb-a", "kb-b"};
        QTest::newRow("nowhere") << both << both << both << "";
        QTest::newRow("document") << QStringList{"kb-a"} << both << both << "kb-b has 0 entries in the document";
        QTest::newRow("twice") << QStringList{"kb-a", "kb-b", "kb-a"} << both << both
                               << "kb-a has 2 entries in the document";
        QTest::newRow("code") << both << QStringList{"kb-b"} << both << "kb-a stands at no code";
        QTest::newRow("test") << both << both << QStringList{"kb-b"} << "kb-a stands at no test";
    }
    void aNameThatIsMissingSomewhere()
    {
        QFETCH(QStringList, told);
        QFETCH(QStringList, inCode);
        QFETCH(QStringList, atTests);
        const KeptBehaviours kept{.told = told,
                                  .inCode = QSet<QString>(inCode.begin(), inCode.end()),
                                  .atTests = QSet<QString>(atTests.begin(), atTests.end())};
        QTEST(kept.faults().join(u'\n'), "faults");
    }

    // Taking any name out of the sources as they are is noticed.
    void everyNameIsNeeded()
    {
        const KeptBehaviours kept = keptBehaviours();
        for (const QString& name : kept.told) {
            KeptBehaviours less = kept;
            less.inCode.remove(name);
            QCOMPARE(less.faults(), QStringList{name + " stands at no code"});
            less = kept;
            less.atTests.remove(name);
            QCOMPARE(less.faults(), QStringList{name + " stands at no test"});
        }
    }

    void namesAreReadFromComments()
    {
        QCOMPARE(namesInComments("int a; // Kept behaviour kb-one-two: why\n"), QSet<QString>{"kb-one-two"});
        QCOMPARE(namesInComments("const char* a = \"kb-one\";\n"), QSet<QString>{});
        QCOMPARE(namesInComments("// akb-one\n"), QSet<QString>{});
        QCOMPARE(namesOfEntries("### A\n\n`kb-one`\n\nsee `kb-two`.\n"), QStringList{"kb-one"});
    }

    void anEntryThatIsNotWhole_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<bool>("isWhole");
        const QString good = "### A\n\n`kb-a`\n\n**You can lose:** b.\n\n**Do this:** c.\n\n**Why:** d.\n";
        QTest::newRow("whole") << good << true;
        QTest::newRow("no name") << QString(good).remove("`kb-a`\n\n") << false;
        QTest::newRow("no loss") << QString(good).remove("**You can lose:** b.\n\n") << false;
        QTest::newRow("no remedy") << QString(good).remove("**Do this:** c.\n\n") << false;
        QTest::newRow("no reason") << QString(good).remove("\n\n**Why:** d.") << false;
        QTest::newRow("reason first") << "### A\n\n`kb-a`\n\n**Why:** d.\n\n**You can lose:** b.\n\n**Do this:** c.\n"
                                      << false;
    }
    void anEntryThatIsNotWhole()
    {
        QFETCH(QString, entry);
        QFETCH(bool, isWhole);
        QCOMPARE(faultsOfEntries("# Title\n\n" + entry).isEmpty(), isWhole);
    }
};

static const testsupport::RunnableTest<KeptBehavioursTest> kRunnable;
#include "KeptBehavioursTest.moc"
