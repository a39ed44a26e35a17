#pragma once

/// Marks what the shared library shows; everything else of it is hidden.
#define RAVELINOX_API [[gnu::visibility("default")]]
/// Takes a part of what is shown back.
#define RAVELINOX_HIDDEN [[gnu::visibility("hidden")]]
