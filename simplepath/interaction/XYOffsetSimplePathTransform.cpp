#include "simplepath/interaction/XYOffsetSimplePathTransform.h"

// The owning handle of an offset is compiled once, here.
template class PHandle<XYOffsetSimplePathTransform>;
