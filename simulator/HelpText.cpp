#include "simulator/CommandLine.h"
#include "simulator/FaultRule.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace simulator {

namespace {

constexpr std::string_view kOptions =
    R"(Usage: ksd-simulator --dosdevices DIR [OPTION]...
       ksd-simulator --type-card NAME [--dosdevices DIR [--port N] | --memory FILE]

Stands in for the KSD driver and a Teslin reader, so that Teslin Configure can be
tried and tested without either. It holds two pseudo-terminals, the driver's device
object and its virtual COM port, and enters them into a folder of DOS names. It
prints a line beginning with "ready:" when both can be opened, and runs until it is
sent SIGINT (Ctrl+C) or SIGTERM; then it removes everything that it made.

  --dosdevices DIR   the folder of DOS names; made if it is missing. The program finds
                     it through $TESLIN_DOSDEVICES or as ~/.teslin/dosdevices; the
                     dosdevices folder of a Windows compatibility layer will do too.
                     Entries made: teslin, com5, and an empty driver file
                     c:/Windows/system32/drivers/Teslin.sys
  --name NAME        the name of the device object (teslin)
  --port N           the number of the COM port, 1 to 256 (5)
  --memory FILE      parameter values to start with, one "aaa=vv" a line, # begins a
                     comment; parameters not named have their factory defaults
  --save-memory FILE write the parameter values there at the end, in the same form
  --log FILE         append a line to FILE for everything that passes either door
  --verbose          write the same lines to standard error
  --fault RULE       do something wrong; may be given several times
  --type-card NAME   print what a reader types for a sample card, Enter as a carriage
                     return, and end: the reader that runs on DIR, one with the values
                     of FILE, or else one from the factory; the name list prints the
                     names of the cards
  --help             this text
  --version          the version

A line of the log: milliseconds since the start, time of day (UTC), the door (device
or port, - for neither), what happened (recv, sent, unfinished, fault, open, close,
hang-up, back, failed, lost, start, end), and the bytes between quotation marks. In
them \n \r \t \\ \" and \xHH stand for control and other bytes.

Fault rules: COMMAND: FAULT [FAULT...]

COMMAND is the command line that is to go wrong, as it is on the wire; a * in it stands
for any run of characters. Of several rules that fit, the first that is due decides.

)";

constexpr std::string_view kExamples = R"(
TEXT with blanks stands between quotation marks, with the escapes of the log. Faults
act in the order of this list. A parameter that is written is stored even if its reply
goes wrong.

Examples:

  --fault '/rawxact WPV01A: silent'
      parameter 01A never answers
  --fault '/rawxact WPV*: on=1 delay=500'
      the first parameter of all comes half a second late
  --fault '/rawxact WPV*: split=every pause=2'
      every reply trickles in, a byte every two milliseconds
  --fault '/rawxact WPV013: cut=27'
      a line that is one character too short
  --fault '/rawxact WPV013: value=FF'
      a wrong value
  --fault '/rawxact WPV013: with="/rawxact WPV014 reply 00: 63"'
      two replies in one write
  --fault '/rawsend \xA2: after="/read report status: 07"'
      an unsolicited line
  --fault '/rawxact WPV020: hang-up=2000'
      the port is gone in the middle of a Retrieve, and back two seconds later
  --fault '/get port_name: reply="/get port_name=\x01\x02COM12\r"'
      control characters in the answer of the device object
  --fault '/get port_name: pad=2000'
      a very long answer

Exit status: 0 after a clean end, 1 if something could not be set up or saved, 2 if the
command line is wrong.
)";

std::string faultLine(const FaultWord& word)
{
    constexpr std::size_t kColumn = 15;
    std::string line = "  " + std::string(word.form);
    line.resize(kColumn, ' ');
    for (const char c : word.meaning) {
        line += c;
        if (c == '\n') {
            line.append(kColumn, ' ');
        }
    }
    return line + '\n';
}

} // namespace

std::string helpText()
{
    std::string text(kOptions);
    for (const FaultWord& word : faultWords()) {
        text += faultLine(word);
    }
    return text.append(kExamples);
}

} // namespace simulator
