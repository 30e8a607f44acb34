#include "simplepath/path/SimplePathVertex.h"

SimplePathVertex::~SimplePathVertex() = default;
