#include "report/ui/SummaryBox.h"
#include "platform/qt/ColumnFont.h"
#include "tests/support/RunnableTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

using report::SummaryBox;

namespace {

QByteArray bytes(const std::string& text)
{
    return QByteArray::fromStdString(text);
}

QByteArray everyByte()
{
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    return all;
}

} // namespace

class SummaryBoxTest final : public QObject
{
    Q_OBJECT

private slots:
    void looksLikeAReport()
    {
        const SummaryBox box;
        QCOMPARE(box.font().family(), QStringLiteral("Courier New"));
        QCOMPARE(box.font().pointSize(), 12);
        QCOMPARE(box.font().styleHint(), QFont::Monospace);
        QVERIFY2(platform::hasColumns(box.font()), "the substitute has no columns");
        QCOMPARE(box.lineWrapMode(), QPlainTextEdit::NoWrap);
        QVERIFY(!box.isReadOnly());
    }

    void keepsEveryText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("shownLines");
        QTest::newRow("nothing") << QByteArray() << 1;
        QTest::newRow("two lines") << QByteArray("one\r\ntwo\r\n") << 3;
        QTest::newRow("no line end at the end") << QByteArray("one\r\ntwo") << 2;
        QTest::newRow("empty lines") << QByteArray("\r\n\r\n\r\n") << 4;
        QTest::newRow("every byte") << everyByte() << 1;
        QTest::newRow("every byte, a line each") << everyByte().replace('\n', "").replace("", "\r\n") << 257;
        QTest::newRow("CR alone") << QByteArray("'\r' (7-bit)\r\n") << 2;
        QTest::newRow("LF alone") << QByteArray("'\n' (7-bit)\r\n") << 2;
        QTest::newRow("CR before a line end") << QByteArray("'\r\r\n'") << 2;
        QTest::newRow("LF before a line end") << QByteArray("'\n\r\n'") << 2;
        QTest::newRow("the other way round") << QByteArray("a\n\rb") << 1;
        QTest::newRow("CR at the end") << QByteArray("a\r") << 1;
        QTest::newRow("NULs") << QByteArray("a\0b\0\0\r\n\0", 8) << 2;
        QTest::newRow("blanks at the end") << QByteArray("a   \r\n  \r\n") << 3;
    }
    void keepsEveryText()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, shownLines);
        SummaryBox box;
        box.setText(text.toStdString());
        QCOMPARE(bytes(box.text()), text);
        QCOMPARE(box.blockCount(), shownLines);
    }

    // A column of the report is a column of the box: no byte is drawn as nothing, as two or as a jump.
    void everyByteTakesOneColumn()
    {
        SummaryBox box;
        box.show();
        box.setText("|");
        const auto widthOf = [&box](const QByteArray& line) {
            box.setText(line.toStdString());
            QTextCursor atEnd = box.textCursor();
            atEnd.movePosition(QTextCursor::End);
            return box.cursorRect(atEnd).left() - box.cursorRect().left();
        };
        const int expected = widthOf("axb");
        for (int byte = 0; byte < 256; ++byte) {
            const QByteArray line = QByteArray("a") + static_cast<char>(byte) + "b";
            QVERIFY2(std::abs(widthOf(line) - expected) <= 1, QByteArray::number(byte, 16).constData());
        }
    }

    void readsWhatIsTyped()
    {
        SummaryBox box;
        box.setText("one\r\n");
        box.moveCaretToEnd();
        QTest::keyClicks(&box, QStringLiteral("two"));
        QTest::keyClick(&box, Qt::Key_Return);
        QTest::keyClicks(&box, QStringLiteral("three"));
        QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier); // a line separator, U+2028
        QTest::keyClicks(&box, QStringLiteral("four"));
        QCOMPARE(bytes(box.text()), QByteArray("one\r\ntwo\r\nthree\r\nfour"));
    }

    void typedControlCharactersAreThemselves()
    {
        SummaryBox box;
        box.setText("ab");
        box.moveCaretToEnd();
        box.insertPlainText(QStringLiteral("\t") + QChar(0xA0) + QChar(0xAD));
        QCOMPARE(bytes(box.text()), QByteArray("ab\t\xA0\xAD"));
    }

    void readsWhatIsPasted_data()
    {
        QTest::addColumn<QString>("pasted");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("lines") << QStringLiteral("a\nb\r\nc\rd") << QByteArray("a\r\nb\r\nc\r\nd");
        QTest::newRow("separators") << QStringLiteral("a\u2028b\u2029c") << QByteArray("a\r\nb\r\nc");
        QTest::newRow("no-break space") << QStringLiteral("a\u00A0b")
                                        << QByteArray("a\xA0"
                                                      "b");
        QTest::newRow("code page") << QStringLiteral("\u20AC\u2122\u00E9") << QByteArray("\x80\x99\xE9");
        QTest::newRow("foreign") << QStringLiteral("\u03B1\U0001F600.") << QByteArray("??.");
    }
    void readsWhatIsPasted()
    {
        QFETCH(QString, pasted);
        QFETCH(QByteArray, text);
        QGuiApplication::clipboard()->setText(pasted);
        SummaryBox box;
        box.paste();
        QCOMPARE(bytes(box.text()), text);
    }

    void caretMovesBehindTheText()
    {
        SummaryBox box;
        QByteArray text("no more");
        for (int line = 0; line < 200; ++line) {
            text += "\r\nline";
        }
        box.setText(text.toStdString());
        QVERIFY(box.textCursor().atStart());
        box.show();
        box.moveCaretToEnd();
        QVERIFY(box.textCursor().atEnd());
        QVERIFY(box.viewport()->rect().contains(box.cursorRect()));
    }

    void newTextForgetsTheOldOne()
    {
        SummaryBox box;
        box.setText("secret");
        box.setText("report");
        box.undo();
        QCOMPARE(bytes(box.text()), QByteArray("report"));
    }
};

static const testsupport::RunnableTest<SummaryBoxTest> kRunnable;
#include "SummaryBoxTest.moc"
