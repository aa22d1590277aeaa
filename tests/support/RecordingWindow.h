#pragma once

#include "device/LinkDisplay.h"
#include "tables/OperationButtons.h"
#include "tables/StatusLine.h"
#include "tables/UnsavedChanges.h"
#include "tests/support/CallLog.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// The main window as the device link sees it: everything it is told goes to the log, and it remembers what it shows.
class RecordingWindow final : public device::LinkDisplay,
                              public tables::StatusLine,
                              public tables::OperationButtons,
                              public tables::UnsavedChanges
{
public:
    explicit RecordingWindow(CallLog& log)
        : m_log(log)
    {}

    // What the window shows.
    std::string statusText;
    std::vector<std::string> statusTexts; // every text that the first status panel has had
    std::string portPanel;
    std::string keyboardLanguageId; // that was looked up last
    std::map<device::Identification, std::string> captions;
    std::map<device::Identification, bool> visible;
    std::string exitCaption = "Exit";
    bool sendLamp = false;
    bool recvLamp = false;
    bool pleaseWait = false;
    bool buttonsEnabled = true;
    std::string progress; // of the last transfer, as "done/all"

    // What the window answers, and what else happens inside a call.
    bool mayDiscard = true;
    std::function<void()> onCheckForUnsavedData;
    std::function<void()> onGetLanguageName;

    void setStatusText(std::string_view text) override
    {
        m_log.push_back("P1: " + shown(text));
        showStatus(text);
    }
    void setPortText(std::string_view text) override
    {
        m_log.push_back("P2: " + shown(text));
        portPanel = text;
    }
    void setLamp(device::Lamp which, bool lit) override
    {
        const bool isSend = which == device::Lamp::Send;
        m_log.emplace_back(std::string(isSend ? "send" : "recv") + (lit ? " lit" : " dark"));
        (isSend ? sendLamp : recvLamp) = lit;
    }
    void setIdentification(device::Identification which, std::string_view caption) override
    {
        m_log.push_back(nameOf(which) + ": " + shown(caption));
        const bool changed = captions[which] != caption;
        captions[which] = caption;
        if (changed && which == device::Identification::Driver) {
            showStatus(caption);
        }
    }
    void showIdentification(device::Identification which, device::Shown what) override
    {
        if (what == device::Shown::ValueAlone) {
            m_log.push_back("show " + nameOf(which) + " value alone");
            return;
        }
        const bool isVisible = what == device::Shown::WithTitle;
        m_log.push_back((isVisible ? "show " : "hide ") + nameOf(which));
        visible[which] = isVisible;
    }
    void GetLanguageName(std::string_view KeyboardLanguageId) override
    {
        m_log.emplace_back("GetLanguageName");
        keyboardLanguageId = KeyboardLanguageId;
        if (onGetLanguageName) {
            onGetLanguageName();
        }
    }
    void ShowPleaseWait() override
    {
        m_log.emplace_back("ShowPleaseWait");
        pleaseWait = true;
    }
    void HidePleaseWait() override
    {
        m_log.emplace_back("HidePleaseWait");
        pleaseWait = false;
    }
    void EnableButtons(bool enabled) override
    {
        m_log.emplace_back(enabled ? "EnableButtons true" : "EnableButtons false");
        buttonsEnabled = enabled;
    }

    [[nodiscard]] bool CheckForUnsavedData(tables::TableId table) override
    {
        m_log.emplace_back(table == tables::TableId::Configuration ? "CheckForUnsavedData_CFG"
                                                                   : "CheckForUnsavedData_KB");
        if (onCheckForUnsavedData) {
            onCheckForUnsavedData();
        }
        return mayDiscard;
    }
    void enableExitButton() override { m_log.emplace_back("enable Exit"); }
    void setExitCaption(std::string_view caption) override
    {
        m_log.push_back("Exit: " + std::string(caption));
        exitCaption = caption;
    }
    void showProgress(int rowsDone, int rows) override
    {
        m_log.push_back("progress " + std::to_string(rowsDone) + "/" + std::to_string(rows));
        progress = std::to_string(rowsDone) + "/" + std::to_string(rows);
    }

private:
    [[nodiscard]] static std::string nameOf(device::Identification which)
    {
        switch (which) {
        case device::Identification::Driver:
            return "Driver";
        case device::Identification::Firmware:
            return "Firmware";
        case device::Identification::Copyright:
            return "Copyright";
        }
        return "?";
    }

    void showStatus(std::string_view text)
    {
        statusText = text;
        statusTexts.emplace_back(text);
    }

    CallLog& m_log;
};

} // namespace testsupport
