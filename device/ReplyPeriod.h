#pragma once

namespace device {

// The countdown behind every wait, in ticks of the 50 ms timer. The reader's driver gives no sign that a command is
// done, so each command gets a fixed reply period.
struct ReplyPeriod
{
    static constexpr int kTickMilliseconds = 50;
    static constexpr double kSendTicks = 2;     // so a send ends on the third tick
    static constexpr double kResponseTicks = 5; // what a missing reply gets on top
    static constexpr int kSendLedTicks = 2;

    int CommBusy = 0;             // 1 while the reply period of the last command is open
    double ResponseCountdown = 0; // ticks left; also the pause timer of the read test
    int SendLedTicks = 0;         // ticks for which the send lamp stays lit

    // A command goes out.
    void openForSend()
    {
        SendLedTicks = kSendLedTicks;
        CommBusy = 1;
        ResponseCountdown = kSendTicks;
    }

    // One tick of the lamp; true while the send lamp is to be lit.
    [[nodiscard]] bool countLamp()
    {
        if (SendLedTicks < 1) {
            return false;
        }
        --SendLedTicks;
        return true;
    }

    // One tick of the countdown; true when it had run out before, which ends the reply period.
    [[nodiscard]] bool countDown()
    {
        if (ResponseCountdown <= 0) {
            CommBusy = 0;
            return true;
        }
        ResponseCountdown -= 1;
        return false;
    }
};

} // namespace device
