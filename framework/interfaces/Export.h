#pragma once

/// Marks the few symbols that a module shows to the loader; everything else is compiled hidden.
#define MODULE_EXPORT __attribute__((visibility("default")))
