#include "tables/Parameters.h"
#include "tests/documents/Document.h"
#include "tests/documents/ProgramTexts.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QDirIterator>
#include <QFile>
#include <QTest>

#include <cerrno>
#include <cstring>
#include <vector>

using namespace documents;

namespace {

// A piece of a text that the program puts together.
struct Piece
{
    enum class Kind { Literal, Sentence, Value };

    Kind kind;
    QString text; // of a literal with places for values: as it is in the source
    QString shown = text;
};

struct Composed
{
    QString text; // as the documents have it
    std::vector<Piece> pieces;
};

Piece literal(const QString& text)
{
    return {.kind = Piece::Kind::Literal, .text = text};
}
Piece literal(const QString& text, const QString& shown)
{
    return {.kind = Piece::Kind::Literal, .text = text, .shown = shown};
}
Piece sentence(const QString& text)
{
    return {.kind = Piece::Kind::Sentence, .text = text};
}
Piece value(const QString& text)
{
    return {.kind = Piece::Kind::Value, .text = text};
}

std::vector<Composed> composedTexts()
{
    const auto couldNotOpen = [](int error) {
        const QString reason = QString::fromLocal8Bit(std::strerror(error));
        return Composed{"Could not open COM5, " + reason,
                        {literal("Could not open COM"), value("5"), literal(", "), value(reason)}};
    };
    const auto updated = [](const QString& address, const QString& byte) {
        return Composed{"Updated Configuration table with " + address + "=" + byte,
                        {literal("Updated "), literal("Configuration"), literal(" table with "), value(address),
                         literal("="), value(byte)}};
    };
    const auto rows = [](const QString& shown) { return Composed{shown, {literal("%v of %m rows", shown)}}; };
    return {
        couldNotOpen(ENOENT),
        couldNotOpen(EACCES),
        couldNotOpen(EBUSY),
        updated("014", "63"),
        updated("01A", "20"),
        rows("27 of 27 rows"),
        rows("9 of 27 rows"),
        rows("75 of 75 rows"),
        {"KSD Port: COM5", {literal("KSD Port: "), value("COM5")}},
        {"Lost the connection to COM5", {literal("Lost the connection to COM"), value("5")}},
        {"Teslin successfully opened (COM port 5 found)",
         {value("Teslin"), literal(" successfully opened (COM port "), value("5"), literal(" found)")}},
        {"Do you want to send this parameter? ( 013=95)",
         {literal("Do you want to send this parameter? ( "), value("013=95"), literal(")")}},
        {"Configuration table changed but not saved!",
         {literal("Configuration"), sentence(" table changed but not saved!")}},
        {"Version 01.04.0001", {literal("Version "), value("01.04.0001")}},
        {"Version: 1.04.0001", {literal("Version: "), value("1.04.0001")}},
        {"ready:", {sentence("ready:")}},
        {"keyboad", {sentence("keyboad")}},
        {"ASCII.", {sentence("ASCII.")}},
        {"<CR>", {literal("<"), literal("CR"), literal(">")}},
    };
}

// The captions that the system's own message boxes have; the window's test of the documents looks at such a box.
const QStringList kToolkit = {"Yes", "No", "Cancel", "OK"};

ProgramTexts programTexts()
{
    ProgramTexts texts;
    for (const char* const room : {"app", "tables", "device", "files", "report", "platform", "text", "widgets"}) {
        QDirIterator files(testsupport::sourceFile(room), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly)) {
                texts.addSource(QString::fromUtf8(file.readAll()));
            }
        }
    }
    texts.addSource(readSource("simulator/posix/Simulator.cpp"));
    for (const tables::Parameter& row : tables::parameters_KB()) {
        texts.addText(QString::fromStdString(std::string(row.notes)));
    }
    for (const QString& line : readSource("packaging/linux/teslin-configure.desktop").split(u'\n')) {
        if (line.startsWith("Name=")) {
            texts.addText(line.mid(5));
        }
    }
    return texts;
}

bool isIn(const ProgramTexts& texts, const QString& text)
{
    // One word could be part of anything.
    return texts.holds(text) || (text.contains(u' ') && texts.holdsSentence(text)) || kToolkit.contains(text);
}

// What is wrong with a composed text; empty when nothing is.
QString faultOf(const Composed& composed, const ProgramTexts& texts)
{
    QString whole;
    for (const Piece& piece : composed.pieces) {
        whole += piece.shown;
        if ((piece.kind == Piece::Kind::Literal && !texts.holds(piece.text)) ||
            (piece.kind == Piece::Kind::Sentence && !texts.holdsSentence(piece.text))) {
            return composed.text + ": the program has no \"" + piece.text + "\"";
        }
    }
    return whole == composed.text ? QString() : composed.text + ": the pieces give \"" + whole + "\"";
}

QStringList faultsOf(const Document& document, const ProgramTexts& texts)
{
    QStringList composed;
    for (const Composed& each : composedTexts()) {
        composed.append(each.text);
    }
    QStringList faults;
    for (const QString& text : document.quotedTexts()) {
        if (!composed.contains(text) && !isIn(texts, text)) {
            faults.append("\"" + text + "\"");
        }
    }
    return faults;
}

} // namespace

// What stands in double quotes in the documents is what the program shows, to the letter.
class QuotedTextsTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyQuotedTextIsThePrograms_data()
    {
        QTest::addColumn<QString>("document");
        for (const QString& document : userDocuments()) {
            QTest::newRow(qPrintable(document)) << document;
        }
    }
    void everyQuotedTextIsThePrograms()
    {
        QFETCH(QString, document);
        QCOMPARE(faultsOf(Document(readSource(document)), programTexts()).join(u'\n'), "");
    }

    void composedTextsAreMadeOfItsPieces()
    {
        const ProgramTexts texts = programTexts();
        QStringList quoted;
        for (const QString& document : userDocuments()) {
            quoted += Document(readSource(document)).quotedTexts();
        }
        for (const Composed& composed : composedTexts()) {
            QCOMPARE(faultOf(composed, texts), "");
            QVERIFY2(quoted.contains(composed.text), qPrintable(composed.text + " is in no document"));
        }
    }

    // --- That the check itself can fail ---

    void aTextThatIsNotTheProgramsIsFound_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("caption") << "Press \"Retrieve\"." << false;
        QTest::newRow("other letters") << "Press \"RETRIEVE\"." << true;
        QTest::newRow("one blank") << "\"Save Teslin Config File\"" << true;
        QTest::newRow("two blanks") << "\"Save  Teslin Config File\"" << false;
        QTest::newRow("part of a word") << "Press \"Retriev\"." << true;
        QTest::newRow("spelled rightly") << "\"Required, 1\" and \"Send Terminating Character:\"" << true;
        QTest::newRow("wrapped") << "\"Could not open\nTeslin port!\"" << false;
        QTest::newRow("in a table") << "| \"Retrieve\" | \"Get values\" |" << true;
        QTest::newRow("another port") << "\"Could not open COM6, Permission denied\"" << true;
        QTest::newRow("in code") << "`\"nothing\"`\n\n    echo \"nothing\"\n" << false;
    }
    void aTextThatIsNotTheProgramsIsFound()
    {
        QFETCH(QString, text);
        QTEST(!faultsOf(Document(text), programTexts()).isEmpty(), "found");
    }

    void aPieceThatIsMissingIsFound()
    {
        ProgramTexts texts;
        texts.addSource("\"KSD Port: \"");
        QCOMPARE(faultOf({"KSD Port: COM5", {literal("KSD Port: "), value("COM5")}}, texts), "");
        QVERIFY(!faultOf({"KSD Port: COM5", {literal("Port: "), value("COM5")}}, texts).isEmpty());
        QVERIFY(!faultOf({"KSD Port: COM5", {literal("KSD Port: "), value("COM6")}}, texts).isEmpty());
    }

    void literalsAreReadAsTheCompilerReadsThem()
    {
        const QString source = "f(\"a\\\"b\\\\\", 'c', '\"', '\\'', \"d\" \"e\"\n"
                               "    \"f\") // \"g\"\n"
                               "    + R\"(h\"i)\" + \"j\\n\\xB7k\"";
        QCOMPARE(literalsOf(source), (QStringList{"a\"b\\", "def", "h\"i", QStringLiteral("j\n\u00B7k")}));
    }
};

static const testsupport::RunnableTest<QuotedTextsTest> kRunnable;
#include "QuotedTextsTest.moc"
