#pragma once
// The first line of every bridge call of the stand-in: a call that a test has set to fail
// answers failure (0) or raises, before it touches the document.
#include "sim/host.h"

#define OSTIN_FAULT_POINT(name)                                                                    \
  if (::ostin::sim::Host::Instance().Refuses(name)) return 0

// The stand-in's description of a record class, looked up once per call site.
#define OSTIN_SHAPE_OF(C) static const ostin::sim::RecordShape& shape = ostin::sim::ShapeOf(#C)
