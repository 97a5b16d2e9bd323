// Every exported class of znmt64, with the companion and framework types of their signatures.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Afx.h>
#include <znbl64/znbl64.h>
#include <znag64/znag64.h>

// Linear algebra core
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>
#include <znmt64/SMat.h>
#include <znmt64/MatSq.h>
#include <znmt64/Polinom.h>
#include <znmt64/AffinTransf.h>
#include <znmt64/Tensor3.h>
#include <znmt64/C.h>
#include <znmt64/Perm.h>
#include <znmt64/CMatWriter.h>
#include <znmt64/StateMatr.h>

// Frames and motions
#include <znmt64/StateStack.h>
#include <znmt64/CMFrame.h>
#include <znmt64/Rotation.h>
#include <znmt64/CMovement.h>
#include <znmt64/ZnScale.h>

// Lines, planes, segments, circles
#include <znmt64/CLineal.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/CCircle.h>
#include <znmt64/Bar.h>

// Triangles and distance
#include <znmt64/Triangle3D.h>
#include <znmt64/DistContext.h>

// Scalar solver
#include <znmt64/CScalarSolver.h>
#include <znmt64/CircleSolver.h>

// Module entry and component objects
#include <znmt64/DynaModuleMatr.h>
#include <znmt64/RenderContext2.h>
#include <znmt64/MRefObj.h>
#include <znmt64/FrameInterfaces.h>
#include <znmt64/FrameOI.h>
#include <znmt64/CircleInterfaces.h>
#include <znmt64/CircleOI.h>
#include <znmt64/PropertyArray2OI.h>
