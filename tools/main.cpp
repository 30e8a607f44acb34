#include "toolkit/Tool.h"

#include <iostream>

int main(int argc, char** argv) {
    return sptool::runTool(argc, argv, std::cout, std::cerr);
}
