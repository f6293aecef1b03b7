// glyphor-batch: the test bench without a window.
#include "BatchApp.h"

#include <iostream>
#include <unistd.h>

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    BatchApp::Terminals terminals;
    terminals.out = isatty(STDOUT_FILENO) == 1;
    terminals.err = isatty(STDERR_FILENO) == 1;
    return BatchApp::Run(args, std::cout, std::cerr, terminals);
}
