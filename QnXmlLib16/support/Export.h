#pragma once

// QNXML_API marks what a user of the shared library may link against; everything else is
// hidden. QNXML_PRIVATE hides a nested type of an exported class.
#define QNXML_API __attribute__((visibility("default")))
#define QNXML_PRIVATE __attribute__((visibility("hidden")))
