#pragma once

// The host's design object. The library only passes pointers to it along; it never defines it.
class PathSeg;
