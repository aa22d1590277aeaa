#pragma once

#include "device/LinkWindow.h"
#include "device/TransferWindow.h"
#include "tests/support/CallLog.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// The main window as the device link sees it: everything it is told goes to the log, and it remembers what it shows.
class RecordingWindow final : public device::LinkWindow, public device::TransferWindow
{
public:
    explicit RecordingWindow(CallLog& log)
        : m_log(log)
    {}

    // What the window shows.
    std::string statusText;
    std::vector<std::string> statusTexts; // every text that the first status panel has had
    std::string portPanel;
    std::map<device::Identification, std::string> captions;
    std::map<device::Identification, bool> visible;
    std::string exitCaption = "Exit";
    bool sendLamp = false;
    bool recvLamp = false;
    bool pleaseWait = false;
    bool buttonsEnabled = true;
    std::string progress; // of the last transfer, as "done/all"

    // What the window answers, and what else happens inside a call.
    int tab = 0;
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
    void setSendLamp(bool lit) override
    {
        m_log.emplace_back(lit ? "send lit" : "send dark");
        sendLamp = lit;
    }
    void setRecvLamp(bool lit) override
    {
        m_log.emplace_back(lit ? "recv lit" : "recv dark");
        recvLamp = lit;
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
    void showIdentification(device::Identification which, bool isVisible) override
    {
        m_log.push_back((isVisible ? "show " : "hide ") + nameOf(which));
        visible[which] = isVisible;
    }
    void showDriverName() override { m_log.emplace_back("show Driver value alone"); }
    void GetLanguageName() override
    {
        m_log.emplace_back("GetLanguageName");
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

    [[nodiscard]] int currentTab() const override { return tab; }
    [[nodiscard]] bool CheckForUnsavedData_CFG() override { return checkForUnsavedData("CheckForUnsavedData_CFG"); }
    [[nodiscard]] bool CheckForUnsavedData_KB() override { return checkForUnsavedData("CheckForUnsavedData_KB"); }
    void Hide_All() override { m_log.emplace_back("Hide_All"); }
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

    bool checkForUnsavedData(const char* name)
    {
        m_log.emplace_back(name);
        if (onCheckForUnsavedData) {
            onCheckForUnsavedData();
        }
        return mayDiscard;
    }

    CallLog& m_log;
};

} // namespace testsupport
