#include "cli/Program.h"
#include "platform/PlainStreams.h"

int main(int argc, char* argv[])
{
    const platform::PlainStreams streams;
    return cli::runProgram(argc, argv);
}
