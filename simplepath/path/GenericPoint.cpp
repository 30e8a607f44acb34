#include "simplepath/path/GenericPoint.h"

GenericPoint::~GenericPoint() = default;
