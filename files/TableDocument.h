#pragma once

#include "files/TableFile.h"
#include "tables/LiveTable.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace files {

// The comment box of a table.
class CommentBox
{
public:
    virtual ~CommentBox() = default;

    // Bytes of the Windows-1252 code page; line ends are CR LF.
    [[nodiscard]] virtual std::string comments() const = 0;
    virtual void setComments(std::string_view text) = 0;
};

// How the files of one table are named, read and written.
struct TableFormat
{
    std::string_view pattern; // of file names in a dialog
    std::string_view filter;  // what the dialog calls them
    TableFile (*parse)(std::string_view bytes);
    std::string (*write)(std::string_view comment, std::span<const tables::ParamRow> rows);
};

// The format of a table's files: .tlc or .txt.
[[nodiscard]] const TableFormat& formatOf(tables::TableId table);

// One table as the user keeps it in a file: its rows, its comments and the name of the file.
class TableDocument final
{
public:
    // Both outlive the document.
    TableDocument(tables::LiveTable& table, CommentBox& comments);

    [[nodiscard]] tables::LiveTable& table() const { return m_table; }
    [[nodiscard]] CommentBox& comments() const { return m_comments; }
    [[nodiscard]] tables::TableId id() const { return m_table.table().kind().id; }
    [[nodiscard]] const TableFormat& format() const { return formatOf(id()); }

    // The file last opened or saved, as the user named it. Empty, or a pattern with a "*", means none yet.
    [[nodiscard]] const std::filesystem::path& name() const { return m_name; }
    void remember(const std::filesystem::path& name) { m_name = name; }

    // Empties comments and name.
    void forgetCommentsAndFile();
    // What the file holds, in place of comments and rows. Editing is allowed afterwards; marks and flag are still those
    // of the rows that are gone.
    void replaceBy(const TableFile& file, tables::EditSession& session);
    // Marks, flag and the star of the tab go: what the table holds is what the file holds.
    void nowSaved();

private:
    tables::LiveTable& m_table;
    CommentBox& m_comments;
    std::filesystem::path m_name;
};

} // namespace files
