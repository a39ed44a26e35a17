#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "ravelinox/cmdl1.hpp"

namespace ravelinox::host {

/// The names that this program gives to new databases.
inline constexpr std::string_view station_file_name = "stazione.db";
inline constexpr std::string_view line_file_name = "linea.db";

/// The absolute path as the component takes it: "\" between folders.
[[nodiscard]] std::string component_path(const std::filesystem::path& path);

/// What a result of `VerificaDB` below 7 says, as the rest of a sentence on the file.
[[nodiscard]] std::string_view reason_unusable(std::uint8_t check_result);
inline constexpr std::uint8_t usable = 7;

/// The station database that a path means: the file itself, or the one such file of a folder.
/// Refuses with a sentence when there is none, or more than one.
[[nodiscard]] std::filesystem::path find_station_database(const std::filesystem::path& given);

/// A station with both its sessions open. They are closed at the end of its life.
class StationSession {
 public:
  explicit StationSession(const std::filesystem::path& database);
  StationSession(const StationSession&) = delete;
  StationSession& operator=(const StationSession&) = delete;
  ~StationSession();

  cmdl1 component;

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

  /// A slot of the host's own on the line database, so that the component's stay free.
  [[nodiscard]] Recordset& timetable() { return timetable_; }

 private:
  void open_sessions(const std::filesystem::path& database);

  std::filesystem::path folder_;
  std::string name_;
  Recordset timetable_;
};

}  // namespace ravelinox::host
