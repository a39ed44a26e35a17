// Finds the path in a connection string: "Name = value;" parts, of which the last is the path.
#include "platform/data/paths.hpp"

#include <algorithm>

#include "platform/data/text_order.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox::data {
namespace {

[[nodiscard]] std::string_view without_leading_spaces(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

[[nodiscard]] std::string_view without_outer_spaces(std::string_view text) {
  text = without_leading_spaces(text);
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

std::string with_forward_slashes(std::string_view path) {
  std::string result(path);
  std::ranges::replace(result, '\\', '/');
  return result;
}

std::string data_source(std::string_view connection_string) {
  std::string_view rest = connection_string;
  while (!rest.empty()) {
    const std::size_t equals = rest.find('=');
    const std::size_t separator = rest.find(';');
    if (equals != std::string_view::npos && equals < separator &&
        equal_ignoring_case(without_outer_spaces(rest.substr(0, equals)), "data source"))
      return with_forward_slashes(without_leading_spaces(rest.substr(equals + 1)));
    rest.remove_prefix(std::min(separator, rest.size() - 1) + 1);
  }
  throw Error(ErrorNumber::data_failure,
              "The connection string \"" + std::string(connection_string) +
                  "\" names no file; it needs \"Data source = \" and a path.");
}

}  // namespace ravelinox::data
