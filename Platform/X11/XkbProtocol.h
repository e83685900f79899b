#pragma once

#include <xcb/xcb.h>

// The protocol header names a field `explicit`, which C++ keeps for itself.
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
