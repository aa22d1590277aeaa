#pragma once

#include <QByteArray>
#include <QTemporaryDir>
#include <QtGlobal>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

// Real files in real folders, read and written without the code under test.
namespace test {

// A folder of the test's own, removed with all its content.
class TemporaryFolder final
{
public:
    [[nodiscard]] std::filesystem::path path() const { return m_folder.path().toStdString(); }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path() / name; }

private:
    QTemporaryDir m_folder;
};

// Creates the folders on the way, too.
inline void writeBytes(const std::filesystem::path& path, std::string_view bytes)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.close();
    if (!file) {
        qFatal("cannot write %s", path.string().c_str());
    }
}

inline QByteArray bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return "(cannot be read)";
    }
    return QByteArray::fromStdString({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
}

// Every name below a folder, hidden ones included, relative to it.
inline std::set<std::string> namesIn(const std::filesystem::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        names.insert(entry.path().lexically_relative(folder).string());
    }
    return names;
}

} // namespace test
