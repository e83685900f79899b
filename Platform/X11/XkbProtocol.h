#pragma once

#include <xcb/xcb.h>

// The protocol header names a field `explicit`, which is a C++ keyword. clang warns about a macro with a keyword's
// name.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif
