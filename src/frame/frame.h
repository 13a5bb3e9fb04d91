// The calling frame: how every export receives its arguments and makes its
// results. Export files include this header and nothing of the platform's
// string, array or variant types beyond what it offers.
//
// Define an export with BRINDLE_EXPORT so that its signature is checked
// against the generated prototype of the list of exports:
//
//     BRINDLE_EXPORT(BSTR) cReverse(BSTR *text) { ... }
#pragma once

#include "platform/ole.h"

#include <brindle/exports.h>

#define BRINDLE_EXPORT(result) extern "C" BRINDLE_API result BRINDLE_CALL

#include "frame/arrays.h"
#include "frame/boundary.h"
#include "frame/flags.h"
#include "frame/records.h"
#include "frame/string_args.h"
#include "frame/string_results.h"
#include "frame/variants.h"
