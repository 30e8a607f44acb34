#include "simplepath/edit/SimplePathPositionTransform.h"

SimplePathPositionTransform::~SimplePathPositionTransform() = default;
