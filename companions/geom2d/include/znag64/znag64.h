// Everything the 2D analytic geometry module exports.
#pragma once
#include <znmt64/Config.h>
#include <znag64/Point2D.h>
#include <znag64/MLine.h>
#include <znag64/Triangle2D.h>
#include <znag64/Circle2D.h>
#include <znag64/SolverBase.h>
#include <znag64/Section.h>
#include <znag64/AnGeoState.h>
