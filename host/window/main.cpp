#include "host/window/Program.h"

int main(int argc, char **argv) { return host::runWindowProgram(argc, argv); }
