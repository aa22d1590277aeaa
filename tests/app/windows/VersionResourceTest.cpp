// What Windows shows of the program without running it, beside what the program says of itself.

#include "app/startup/ProgramText.h"
#include "app/startup/ProgramVersion.h"
#include "platform/windows/WideText.h"
#include "platform/windows/Windows.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <string>
#include <vector>

namespace {

const std::wstring kProgram = platform::toWide(TESLIN_CONFIGURE);

std::vector<std::byte> versionInformation()
{
    DWORD ignored = 0;
    std::vector<std::byte> bytes(::GetFileVersionInfoSizeW(kProgram.c_str(), &ignored));
    if (bytes.empty() ||
        ::GetFileVersionInfoW(kProgram.c_str(), 0, static_cast<DWORD>(bytes.size()), bytes.data()) == 0) {
        return {};
    }
    return bytes;
}

// A resource of the program as it stands in the file; empty when there is none.
QByteArray resource(const wchar_t* name, const wchar_t* type)
{
    HMODULE const module = ::LoadLibraryExW(kProgram.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    HRSRC const found = ::FindResourceW(module, name, type);
    HGLOBAL const loaded = found == nullptr ? nullptr : ::LoadResource(module, found);
    const auto* const bytes = loaded == nullptr ? nullptr : static_cast<const char*>(::LockResource(loaded));
    const QByteArray copy = bytes == nullptr ? QByteArray() : QByteArray(bytes, int(::SizeofResource(module, found)));
    ::FreeLibrary(module);
    return copy;
}

} // namespace

class VersionResourceTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_information = versionInformation();
        QVERIFY(!m_information.empty());
    }

    void texts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char* name, std::string_view text) {
            QTest::newRow(name) << QString::fromLatin1(name) << QByteArray(text.data(), qsizetype(text.size()));
        };
        row("ProductName", app::kProgramTitle);
        row("FileDescription", app::kProgramTitle);
        row("CompanyName", app::kCompanyName);
        row("LegalCopyright", app::kLegalNotice);
        row("ProductVersion", "1.4.1");
        row("FileVersion", "1.4.1");
        row("OriginalFilename", "TeslinConfigure.exe");
    }
    void texts()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, text);
        const QString path = QStringLiteral("\\StringFileInfo\\040904E4\\") + name;
        void* value = nullptr;
        UINT length = 0;
        QVERIFY(::VerQueryValueW(m_information.data(), path.toStdWString().c_str(), &value, &length) != 0);
        QVERIFY(length > 0);
        QCOMPARE(QByteArray::fromStdString(platform::fromWide({static_cast<const wchar_t*>(value), length - 1})), text);
    }

    void numbers()
    {
        void* value = nullptr;
        UINT length = 0;
        QVERIFY(::VerQueryValueW(m_information.data(), L"\\", &value, &length) != 0);
        const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(value);
        const app::ProgramVersion version = app::programVersion();
        QCOMPARE(fixed.dwFileVersionMS, DWORD(version.majorNumber << 16 | version.minorNumber));
        QCOMPARE(fixed.dwFileVersionLS, DWORD(version.revision << 16));
        QCOMPARE(fixed.dwProductVersionMS, fixed.dwFileVersionMS);
        QCOMPARE(fixed.dwProductVersionLS, fixed.dwFileVersionLS);
    }

    void anIconOfEverySize()
    {
        const QByteArray group = resource(MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(14));
        QVERIFY(group.size() > 6);
        // A head of three 16-bit numbers, the last the count; then 14 bytes each, the first its width.
        QList<int> sizes;
        for (int i = 0; i < group[4]; ++i) {
            const int width = static_cast<unsigned char>(group[6 + 14 * i]);
            sizes.append(width == 0 ? 256 : width);
        }
        QCOMPARE(sizes, QList<int>({16, 24, 32, 48, 64, 128, 256}));
    }

    void theManifestAsksForSharpWindowsAndLeavesTheCodePage()
    {
        const QByteArray manifest = resource(MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
        QVERIFY(manifest.contains("PerMonitorV2"));
        QVERIFY(manifest.contains("Microsoft.Windows.Common-Controls"));
        QVERIFY(manifest.contains("asInvoker"));
        QVERIFY(!manifest.contains("<activeCodePage"));
    }

private:
    std::vector<std::byte> m_information;
};

static const testsupport::RunnableTest<VersionResourceTest> kRunnable;
#include "VersionResourceTest.moc"
