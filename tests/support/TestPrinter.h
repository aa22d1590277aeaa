#pragma once

#include "platform/Printer.h"

#include <QTest>

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace testsupport {

// A printer for tests: answers to its dialog from a queue, records every document, and fails the test on a dialog that
// nobody expected and on an answer that nobody used.
class TestPrinter final : public platform::Printer
{
public:
    enum class End { None, Printed, GivenUp };
    struct Document
    {
        std::string name;
        std::vector<std::string> lines;
        End end = End::None;
    };
    enum class Failure { None, Begin, Line, End };

    ~TestPrinter() override { verifyAllUsed(); }

    // The next dialog gets this answer; nothing = cancelled.
    void expectDialog(std::optional<int> copies) { m_answers.push_back(copies); }

    // What goes wrong in the document of the given number (the first is 0); lines fail from the third on.
    void fail(Failure failure, std::size_t document)
    {
        m_failure = failure;
        m_failingDocument = document;
    }

    bool setFontName(std::string_view family) override
    {
        fonts.emplace_back(family);
        return hasFont;
    }

    std::optional<int> askForCopies() override
    {
        if (m_answers.empty()) {
            QTest::qFail("unexpected print dialog", __FILE__, __LINE__);
            return std::nullopt;
        }
        const std::optional<int> answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }

    bool beginDocument(std::string_view name) override
    {
        if (isOpen()) {
            QTest::qFail("a document begins before the last one ended", __FILE__, __LINE__);
        }
        documents.push_back({std::string(name), {}, End::None});
        if (fails(Failure::Begin)) {
            documents.back().end = End::GivenUp;
            return false;
        }
        return true;
    }

    bool printLine(std::string_view line) override
    {
        if (!isOpen()) {
            QTest::qFail("a line outside a document", __FILE__, __LINE__);
            return false;
        }
        if (fails(Failure::Line) && documents.back().lines.size() == 2) {
            return false;
        }
        documents.back().lines.emplace_back(line);
        return true;
    }

    bool endDocument() override { return close(End::Printed) && !fails(Failure::End); }
    void abortDocument() override { close(End::GivenUp); }

    // Fails the test when an expected dialog did not come.
    void verifyAllUsed()
    {
        if (!std::exchange(m_answers, {}).empty()) {
            QTest::qFail("a print dialog that was expected did not come", __FILE__, __LINE__);
        }
    }

    bool hasFont = true;
    std::vector<std::string> fonts;
    std::vector<Document> documents;

private:
    [[nodiscard]] bool isOpen() const { return !documents.empty() && documents.back().end == End::None; }
    [[nodiscard]] bool fails(Failure failure) const
    {
        return m_failure == failure && documents.size() == m_failingDocument + 1;
    }

    bool close(End end)
    {
        if (!isOpen()) {
            QTest::qFail("the end of a document that is not open", __FILE__, __LINE__);
            return false;
        }
        documents.back().end = end;
        return true;
    }

    std::deque<std::optional<int>> m_answers;
    Failure m_failure = Failure::None;
    std::size_t m_failingDocument = 0;
};

} // namespace testsupport
