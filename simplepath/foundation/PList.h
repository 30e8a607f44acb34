#pragma once

// The circular list is declared with the platform types because the imported Bezier curve is a list of
// segments and the platform layer may not reach up into this one; this name stays for the includes that
// know the list as one of the foundation containers.
#include "simplepath/interfaces/PList.h"
