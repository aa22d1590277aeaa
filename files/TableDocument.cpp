#include "files/TableDocument.h"

#include "files/TableFileParser.h"
#include "files/TableFileWriter.h"

#include <cstddef>
#include <cstdint>

namespace files {

namespace {

// What a comment box takes from a file. A file of nothing but comment lines, picked by mistake, must not stop the
// window.
// Kept behaviour kb-long-comment: the rest of a longer one is dropped.
constexpr std::size_t kLongestComment = 65'535;

// The text, or as many of its first lines as have room.
std::string_view wholeLines(std::string_view text, std::size_t most)
{
    if (text.size() <= most) {
        return text;
    }
    const std::size_t lastEnd = text.substr(0, most).rfind("\r\n");
    return text.substr(0, lastEnd == std::string_view::npos ? most : lastEnd + 2);
}

} // namespace

const TableFormat& formatOf(tables::TableId table)
{
    static constexpr TableFormat kConfiguration{.pattern = "*.tlc",
                                                .filter = "Teslin Config Files (*.tlc)",
                                                .parse = parseTableFile_CFG,
                                                .write = writeTableFile_CFG};
    static constexpr TableFormat kKeyboardLanguage{.pattern = "*.txt",
                                                   .filter = "Teslin Keyboard Language Files (*.txt)",
                                                   .parse = parseTableFile_KB,
                                                   .write = writeTableFile_KB};
    return table == tables::TableId::Configuration ? kConfiguration : kKeyboardLanguage;
}

TableDocument::TableDocument(tables::LiveTable& table, CommentBox& comments)
    : m_table(table)
    , m_comments(comments)
{}

void TableDocument::forgetCommentsAndFile()
{
    m_comments.setComments({});
    m_name.clear();
}

void TableDocument::replaceBy(const TableFile& file, tables::EditSession& session)
{
    // No editor may open on a row that is only half there.
    session.EditState = tables::EditSession::kLayingOutKeyboard;
    m_comments.setComments(wholeLines(file.comment, kLongestComment));
    m_table.table().replaceRows(file.rows);
    session.EditState = tables::EditSession::kEditing;
}

void TableDocument::nowSaved()
{
    m_table.restoreTabCaption();
    m_table.Clear_Changed_Flags();
    m_table.table().nowSaved();
}

} // namespace files
