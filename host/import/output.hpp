#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>

#include "host/import/tables.hpp"

namespace ravelinox::host {

/// The two databases that an import makes, under other names until both are whole.
class Output {
 public:
  /// Error 58 when one of the databases is there and is not to be replaced. Makes nothing yet.
  Output(std::filesystem::path folder, bool force);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  ~Output();  ///< removes what was not finished

  void write(const Rows& station, std::initializer_list<Rows> line);

  [[nodiscard]] std::string station_database() const { return station_.string(); }
  [[nodiscard]] std::string line_database() const { return line_.string(); }

 private:
  std::filesystem::path folder_;
  std::filesystem::path station_;
  std::filesystem::path line_;
  bool made_folder_ = false;
};

}  // namespace ravelinox::host
