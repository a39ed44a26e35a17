#pragma once

#include "ravelinox/automation.h"

namespace ravelinox::automation {

/// Writes this library's class, interface and description into the user's registry of components;
/// entries of others stay as they are. `RLX_SELFREG_E_CLASS`, and the file as it was, when it
/// cannot be written.
[[nodiscard]] rlx_result register_server() noexcept;

/// Removes what `register_server` wrote; no error when nothing was there.
[[nodiscard]] rlx_result unregister_server() noexcept;

}  // namespace ravelinox::automation
