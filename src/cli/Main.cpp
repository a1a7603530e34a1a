#include <iostream>

#include "cli/Cli.h"

int main(int argc, char** argv) {
    return zu::RunCli(argc, argv, std::cout, std::cerr);
}
