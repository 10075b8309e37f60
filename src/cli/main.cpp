#include "cli/commands.h"

int main(int argc, char** argv) { return velmora::climain(argc, argv); }
