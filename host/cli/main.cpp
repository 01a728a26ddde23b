#include "host/cli/Program.h"

int main(int argc, char **argv) { return host::cli::runProgram(argc, argv); }
