#include "simplepath/operations/PathUserConsole.h"

// Out of line, so that the console's virtual table lives in the library.
PathUserConsole::~PathUserConsole() = default;

void PathUserConsole::reserved1() {}
void PathUserConsole::reserved2() {}
void PathUserConsole::reserved3() {}
void PathUserConsole::reserved4() {}
void PathUserConsole::reserved5() {}
void PathUserConsole::reserved6() {}
void PathUserConsole::reserved7() {}
void PathUserConsole::reserved8() {}
