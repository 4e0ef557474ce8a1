#include "cli/command.h"

int main(int argc, char** argv) {
    return lintara::cli::Main(argc, argv);
}
