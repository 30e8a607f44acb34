#pragma once

// The one header a host includes: every public header of the library.

// Platform layer
#include "simplepath/interfaces/ArbTrans.h"
#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/interfaces/CArray.h"
#include "simplepath/interfaces/CRect.h"
#include "simplepath/interfaces/DPoint.h"
#include "simplepath/interfaces/DVector.h"
#include "simplepath/interfaces/Deserializer.h"
#include "simplepath/interfaces/IPoint.h"
#include "simplepath/interfaces/P2DMatrix.h"
#include "simplepath/interfaces/P2DTrans.h"
#include "simplepath/interfaces/PBezier.h"
#include "simplepath/interfaces/PBezierCurve.h"
#include "simplepath/interfaces/PBoxForm.h"
#include "simplepath/interfaces/PBoxPoint.h"
#include "simplepath/interfaces/PList.h"
#include "simplepath/interfaces/PRefCount.h"
#include "simplepath/interfaces/PString.h"
#include "simplepath/interfaces/PathSeg.h"
#include "simplepath/interfaces/Serializer.h"
#include "simplepath/interfaces/Tolerance.h"

// Foundation containers and results
#include "simplepath/foundation/ErrorCategory.h"
#include "simplepath/foundation/Outcome.h"
#include "simplepath/foundation/PHandle.h"
#include "simplepath/foundation/PHashablePointer.h"
#include "simplepath/foundation/PList.h"
#include "simplepath/foundation/PXArray.h"

// Path model
#include "simplepath/path/GenericPoint.h"
#include "simplepath/path/MementoTriple.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathConversion.h"
#include "simplepath/path/SimplePathDPointVertex.h"
#include "simplepath/path/SimplePathFastSession.h"
#include "simplepath/path/SimplePathLocationTriple.h"
#include "simplepath/path/SimplePathMemento.h"
#include "simplepath/path/SimplePathPosition.h"
#include "simplepath/path/SimplePathSerializer.h"
#include "simplepath/path/SimplePathTripleList.h"
#include "simplepath/path/SimplePathVertex.h"
#include "simplepath/path/SimplePathVertexTriple.h"

// Legacy curve family
#include "simplepath/legacy/BPoint.h"
#include "simplepath/legacy/CBezier.h"
#include "simplepath/legacy/CBezierPoint.h"
#include "simplepath/legacy/CView3D.h"
#include "simplepath/legacy/DRECT.h"
#include "simplepath/legacy/IsPointInPolygon.h"
#include "simplepath/legacy/LineUtilities.h"

// Editing
#include "simplepath/edit/AbsorbSegmentTransform.h"
#include "simplepath/edit/CombineAdjacentSegmentsTransform.h"
#include "simplepath/edit/CompositeTransform.h"
#include "simplepath/edit/InsertAnchorsTransform.h"
#include "simplepath/edit/NullTransform.h"
#include "simplepath/edit/ReverseShiftPositionTransform.h"
#include "simplepath/edit/RotateTransform.h"
#include "simplepath/edit/ShiftPositionTransform.h"
#include "simplepath/edit/SimplePathChangeInstruction.h"
#include "simplepath/edit/SimplePathPositionTransform.h"
#include "simplepath/edit/SimplePathRefRemapTransform.h"
#include "simplepath/edit/SimplePathRemap.h"
#include "simplepath/edit/SimplePathVertexOpTransforms.h"
#include "simplepath/edit/SplitAnchorTransform.h"
#include "simplepath/edit/SplitSegmentTransform.h"

// Interaction: path transforms, drawing, pick contexts and snapping
#include "simplepath/interaction/SimplePathVertexPickAction.h"
