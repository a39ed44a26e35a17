#pragma once

#include <string>
#include <string_view>

namespace ravelinox::host {

/// A name as the databases can hold it: it is joined into statements and lists without escaping,
/// and written in the code page Windows-1252.
///
///   Rignano Sull'Arno      Rignano Sull’Arno      the typographic apostrophe
///   Aachen, Hbf | Süd      Aachen Hbf Süd         no "," and "|", no double blanks
///   Ghent - Dampoort       Ghent-Dampoort         no " - "
///   Łódź Ďáblice           Lódz Dáblice           letters that the code page lacks lose their mark
///
/// Bytes that are no UTF-8 count as Latin-1. Empty when nothing of the name is left.
[[nodiscard]] std::string clean_name(std::string_view name);

/// What names are compared by: lower case without marks, nothing but letters and digits, so that
/// "frankfurt (main) hbf" finds "Frankfurt(Main)Hbf" and "koln" finds "Köln".
[[nodiscard]] std::string folded(std::string_view name);

/// Lower case, letter for letter of the code page: two stations may not have names that differ in
/// case only, because the statements compare without regard to it.
[[nodiscard]] std::string lower_case(std::string_view name);

}  // namespace ravelinox::host
