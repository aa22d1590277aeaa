#include "tests/support/EditorWindow.h"
#include "tests/support/RunnableTest.h"

#include <QLocale>

using testsupport::EditorWindow;

namespace {

QString text(const char* ascii)
{
    return QLatin1String(ascii);
}

class ConfigurationBoxesTest final : public QObject
{
    Q_OBJECT

private slots:
    // ---- the decimal box ----

    void aDelayIsShownInMilliseconds()
    {
        EditorWindow w;
        w.openCfg(text("01A"), text("12"));
        QCOMPARE(w.box("txtDecEntry")->text(), text("18"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("    9.2 milliseconds"));
        w.openCfg(text("01A"), text("FF"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("  130.6 milliseconds"));
    }

    // kb-too-large
    void anIllegalDelayIsNotWritten()
    {
        EditorWindow w;
        w.openCfg(text("01A"), text("12"));
        w.box("txtDecEntry")->setText(text("300"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("*ERROR* (Legal range is 0 to 255)"));
        QCOMPARE(w.valueCfg(text("01A")), text("12"));
        QCOMPARE(w.markCfg(text("01A")), QString());
        w.box("txtDecEntry")->setText(text("-1"));
        QCOMPARE(w.valueCfg(text("01A")), text("12"));
        w.box("txtDecEntry")->setText(text("99999999999"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("*ERROR* (Legal range is 0 to 255)"));
        QCOMPARE(w.valueCfg(text("01A")), text("12"));
    }

    void everyKeyOfADelayIsWrittenAtOnce()
    {
        EditorWindow w;
        w.openCfg(text("01A"), text("12"));
        QTest::mouseClick(w.box("txtDecEntry"), Qt::LeftButton);
        QTest::keyClicks(w.box("txtDecEntry"), text("3"));
        QCOMPARE(w.valueCfg(text("01A")), text("03"));
        QTest::keyClicks(w.box("txtDecEntry"), text("0"));
        QCOMPARE(w.valueCfg(text("01A")), text("1E"));
        QTest::keyClicks(w.box("txtDecEntry"), text("0"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("*ERROR* (Legal range is 0 to 255)"));
        QCOMPARE(w.valueCfg(text("01A")), text("1E"));
        QCOMPARE(w.markCfg(text("01A")), text("XXX"));
    }

    void twoRowsWithTheSameDelayBothShowIt()
    {
        EditorWindow w;
        w.openCfg(text("01A"), text("12"));
        w.openCfg(text("001"), text("05"));
        w.openCfg(text("01B"), text("12"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("    9.2 milliseconds"));
        QCOMPARE(w.label("lblDecEntry")->toolTip(), QString());
        QCOMPARE(w.markCfg(text("01B")), QString());
    }

    void anEmptiedDelayKeepsTheRow()
    {
        EditorWindow w;
        w.openCfg(text("01A"), text("12"));
        w.box("txtDecEntry")->clear();
        QCOMPARE(w.label("lblDecEntry")->text(), text("    0.0 milliseconds"));
        QCOMPARE(w.valueCfg(text("01A")), text("12"));
        QCOMPARE(w.markCfg(text("01A")), QString());
    }

    void aPastedFractionIsRoundedHalfToEven()
    {
        EditorWindow w;
        w.openCfg(text("01A"), text("12"));
        w.box("txtDecEntry")->setText(text("2.5"));
        QCOMPARE(w.valueCfg(text("01A")), text("02"));
        w.box("txtDecEntry")->setText(text("3.5"));
        QCOMPARE(w.valueCfg(text("01A")), text("04"));
        w.box("txtDecEntry")->setText(text("255.4"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("*ERROR* (Legal range is 0 to 255)"));
        QCOMPARE(w.valueCfg(text("01A")), text("04"));
    }

    void delaysHaveAPointInEveryLanguage()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German));
        EditorWindow w;
        w.openCfg(text("01A"), text("12"));
        QCOMPARE(w.label("lblDecEntry")->text(), text("    9.2 milliseconds"));
        QLocale::setDefault(before);
    }

    // ---- the character box ----

    void aControlCharacterLeavesTheBoxEmpty()
    {
        EditorWindow w;
        w.openCfg(text("015"), text("40"));
        QCOMPARE(w.box("txtCharEntry")->text(), text("@"));
        w.openCfg(text("016"), text("1F"));
        QCOMPARE(w.box("txtCharEntry")->text(), QString());
        QCOMPARE(w.valueCfg(text("016")), text("1F"));
        w.openCfg(text("016"), text("20"));
        QCOMPARE(w.box("txtCharEntry")->text(), text(" "));
    }

    void theFirstCharacterIsWritten()
    {
        EditorWindow w;
        w.openCfg(text("015"), text("40"));
        QTest::mouseClick(w.box("txtCharEntry"), Qt::LeftButton);
        QTest::keyClicks(w.box("txtCharEntry"), text("%"));
        QCOMPARE(w.box("txtCharEntry")->text(), text("%"));
        QCOMPARE(w.valueCfg(text("015")), text("25"));
        QCOMPARE(w.markCfg(text("015")), text("XXX"));
        QCOMPARE(w.panel1, text("value in binary is 0010 0101"));
        QTest::keyClicks(w.box("txtCharEntry"), text("xyz"));
        QCOMPARE(w.box("txtCharEntry")->text(), text("%xyz"));
        QCOMPARE(w.valueCfg(text("015")), text("25"));
    }

    // kb-question-mark
    void charactersAreThoseOfTheWindowsCodePage()
    {
        EditorWindow w;
        w.openCfg(text("015"), text("95"));
        QCOMPARE(w.box("txtCharEntry")->text(), QString(QChar(0x2022)));
        w.box("txtCharEntry")->setText(QString(QChar(0x20AC)));
        QCOMPARE(w.valueCfg(text("015")), text("80"));
        w.box("txtCharEntry")->setText(QString(QChar(0x4E2D)));
        QCOMPARE(w.valueCfg(text("015")), text("3F"));
    }

    void anEmptiedCharacterBoxDoesNothing()
    {
        EditorWindow w;
        w.openCfg(text("015"), text("40"));
        w.panel1 = text("as it was");
        w.box("txtCharEntry")->clear();
        QCOMPARE(w.valueCfg(text("015")), text("40"));
        QCOMPARE(w.markCfg(text("015")), QString());
        QCOMPARE(w.panel1, text("as it was"));
    }

    // ---- the hexadecimal box ----

    void hexTextIsReadForgivingly()
    {
        EditorWindow w;
        w.openCfg(text("01C"), text("00"));
        const QList<std::pair<const char*, const char*>> cases = {
            {"9G", "09"}, {"1 2", "12"}, {"1FF", "FF"}, {"123", "23"}, {"0x1F", "00"}, {"ab", "AB"}, {"5", "05"}};
        for (const auto& [typed, stored] : cases) {
            w.box("txtHexEntry")->setText(text(typed));
            QCOMPARE(w.valueCfg(text("01C")), text(stored));
        }
        QCOMPARE(w.markCfg(text("01C")), text("XXX"));
    }

    void anEmptiedHexBoxDoesNothing()
    {
        EditorWindow w;
        w.openCfg(text("01C"), text("55"));
        w.panel1 = text("as it was");
        w.box("txtHexEntry")->clear();
        QCOMPARE(w.valueCfg(text("01C")), text("55"));
        QCOMPARE(w.markCfg(text("01C")), QString());
        QCOMPARE(w.panel1, text("as it was"));
    }

    // ---- the terminator ----

    void aNewTerminatorKeepsItsPlace()
    {
        EditorWindow w;
        w.openCfg(text("022"), text("8D"));
        QCOMPARE(w.selected("radSendTermAfter"), 1);
        QCOMPARE(w.box("txtHexEntry")->text(), text("8D"));
        QTest::mouseClick(w.box("txtHexEntry"), Qt::LeftButton);
        QTest::keyClick(w.box("txtHexEntry"), Qt::Key_Delete);
        QCOMPARE(w.valueCfg(text("022")), text("8D"));
        QTest::keyClicks(w.box("txtHexEntry"), text("0A"));
        QCOMPARE(w.box("txtHexEntry")->text(), text("0A"));
        QCOMPARE(w.valueCfg(text("022")), text("8A"));
    }

    void aTypedHighBitIsKept()
    {
        EditorWindow w;
        w.openCfg(text("022"), text("0D"));
        w.box("txtHexEntry")->setText(text("8A"));
        QCOMPARE(w.valueCfg(text("022")), text("8A"));
        w.box("txtHexEntry")->setText(text("0A"));
        QCOMPARE(w.valueCfg(text("022")), text("8A"));
    }

    void noTerminatorHidesItsBox()
    {
        EditorWindow w;
        w.openCfg(text("022"), text("8D"));
        w.click("radSendTermAfter", 2);
        QCOMPARE(w.valueCfg(text("022")), text("00"));
        QCOMPARE(w.markCfg(text("022")), text("XXX"));
        QVERIFY(w.box("txtHexEntry")->isHidden());
        QVERIFY(w.label("lblHexEntry")->isHidden());
        w.click("radSendTermAfter", 0);
        QVERIFY(w.box("txtHexEntry")->isVisible());
        QVERIFY(w.label("lblHexEntry")->isVisible());
        QCOMPARE(w.valueCfg(text("022")), text("0D"));
    }

    void openingWithoutTerminatorShowsTheBox()
    {
        EditorWindow w;
        w.openCfg(text("022"), text("00"));
        QCOMPARE(w.selected("radSendTermAfter"), 2);
        QVERIFY(w.box("txtHexEntry")->isVisible());
        QCOMPARE(w.box("txtHexEntry")->text(), text("00"));
        w.click("radSendTermAfter", 2);
        QCOMPARE(w.valueCfg(text("022")), text("00"));
        QCOMPARE(w.markCfg(text("022")), QString());
        QVERIFY(w.box("txtHexEntry")->isHidden());
    }

    // The hidden box still reads 0D, so it does not report the carriage return that it is given again.
    void aTerminatorComesBackAlthoughTheBoxKeptIt()
    {
        EditorWindow w;
        for (const int index : {1, 0}) {
            w.openCfg(text("022"), text("0D"));
            w.click("radSendTermAfter", 2);
            QCOMPARE(w.box("txtHexEntry")->text(), text("0D"));
            w.click("radSendTermAfter", index);
            QCOMPARE(w.valueCfg(text("022")), index == 1 ? text("8D") : text("0D"));
            QCOMPARE(w.box("txtHexEntry")->text(), text("0D"));
        }
    }

    void aTerminatorComesWhenTheBoxHeldAnother()
    {
        EditorWindow w;
        w.openCfg(text("022"), text("00"));
        w.click("radSendTermAfter", 1);
        QCOMPARE(w.valueCfg(text("022")), text("8D"));
        QCOMPARE(w.box("txtHexEntry")->text(), text("0D"));
    }

    // kb-terminator-box
    void theTerminatorBoxAndItsOptionsDoNotFollowEachOther()
    {
        EditorWindow w;
        w.openCfg(text("022"), text("8D"));
        w.click("radSendTermAfter", 0);
        QCOMPARE(w.valueCfg(text("022")), text("0D"));
        QCOMPARE(w.box("txtHexEntry")->text(), text("8D"));
        w.openCfg(text("022"), text("0D"));
        w.box("txtHexEntry")->setText(text("00"));
        QCOMPARE(w.valueCfg(text("022")), text("00"));
        QCOMPARE(w.selected("radSendTermAfter"), 0);
    }
};

} // namespace

static const testsupport::RunnableTest<ConfigurationBoxesTest> kRunnable;
#include "ConfigurationBoxesTest.moc"
