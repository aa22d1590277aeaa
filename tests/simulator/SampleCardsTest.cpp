#include "simulator/TypedCard.h"
#include "tests/support/RunnableTest.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>

using namespace simulator;

class SampleCardsTest final : public QObject
{
    Q_OBJECT

private slots:
    void theirNames()
    {
        QStringList names;
        for (const SampleCard& card : sampleCards()) {
            names << QString::fromLatin1(card.name.data(), qsizetype(card.name.size()));
            QCOMPARE(findSampleCard(card.name), &card);
            QVERIFY(!card.meaning.empty());
        }
        QCOMPARE(names, (QStringList{"credit", "bank", "licence", "seven-bit"}));
        QVERIFY(findSampleCard("") == nullptr);
        QVERIFY(findSampleCard("cred") == nullptr);
        QVERIFY(findSampleCard("list") == nullptr); // a word of the command line
    }

    // Tracks between their sentinels, no longer than a stripe holds, and one Enter.
    void tracks_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("starts"); // the start sentinels in their order
        QTest::newRow("credit") << QByteArray("credit") << QByteArray("%;");
        QTest::newRow("bank") << QByteArray("bank") << QByteArray("%;+");
        QTest::newRow("licence") << QByteArray("licence") << QByteArray("%;#");
        QTest::newRow("seven-bit") << QByteArray("seven-bit") << QByteArray("%@&");
    }
    void tracks()
    {
        QFETCH(QByteArray, name);
        const SampleCard* const card = findSampleCard(name.toStdString());
        QVERIFY(card != nullptr);
        QByteArray keys = QByteArray::fromStdString(typedCard(*card, {}));
        QVERIFY(keys.endsWith("?\r"));
        keys.chop(1);
        QVERIFY(std::ranges::all_of(keys, [](char key) { return key >= ' ' && key <= '_'; }));
        QByteArrayList tracks = keys.split('?');
        QVERIFY(tracks.takeLast().isEmpty());
        QByteArray starts;
        for (const QByteArray& track : tracks) {
            starts += track.front();
        }
        QTEST(starts, "starts");
        // With the end sentinel and the check character that is never typed.
        const bool isNumeric = starts.at(1) == ';';
        QVERIFY(tracks.at(0).size() + 2 <= 79);
        QVERIFY(tracks.at(1).size() + 2 <= (isNumeric ? 40 : 79));
        QVERIFY(tracks.size() < 3 || tracks.at(2).size() + 2 <= (starts.at(2) == '+' ? 107 : 82));
        QVERIFY(!isNumeric || std::ranges::all_of(tracks.at(1).mid(1),
                                                  [](char key) { return (key >= '0' && key <= '9') || key == '='; }));
    }

    // No account, licence or person in them.
    void nothingIsReal()
    {
        static const QRegularExpression number(QStringLiteral("\\d{13,}"));
        for (const SampleCard& card : sampleCards()) {
            const QString keys = QString::fromStdString(typedCard(card, {}));
            QVERIFY2(keys.contains(QStringLiteral("SAMPLE")), card.name.data());
            auto matches = number.globalMatch(keys);
            while (matches.hasNext()) {
                const QString digits = matches.next().captured();
                QVERIFY2(digits.count(QLatin1Char('0')) + 4 >= digits.size(), qPrintable(digits));
            }
        }
    }
};

static const testsupport::RunnableTest<SampleCardsTest> kRunnable;
#include "SampleCardsTest.moc"
