// The dispatch interface of every face: members found by name, called by identifier.
#pragma once

#include <cstdint>

#include "ravelinox/automation.h"

namespace ravelinox::automation {

rlx_result no_type_information_count(rlx_dispatch* self, std::uint32_t* count);
rlx_result no_type_information(rlx_dispatch* self, std::uint32_t index, std::uint32_t locale,
                               void** info);
rlx_result ids_of_names(rlx_dispatch* self, const rlx_guid* reserved, std::uint16_t** names,
                        std::uint32_t count, std::uint32_t locale, std::int32_t* ids);
rlx_result invoke(rlx_dispatch* self, std::int32_t member, const rlx_guid* reserved,
                  std::uint32_t locale, std::uint16_t use, rlx_arguments* arguments,
                  rlx_variant* result, rlx_exception* failure, std::uint32_t* wrong_argument);

}  // namespace ravelinox::automation
