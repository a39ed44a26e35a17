#include "timetable/max.hpp"

namespace ravelinox::mdl1 {

Variant Max(const Variant& a, const Variant& b) { return to_int32(a) > to_int32(b) ? a : b; }

}  // namespace ravelinox::mdl1
