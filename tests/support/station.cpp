#include "support/station.hpp"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

#include "support/slot.hpp"

namespace ravelinox::testing {

namespace {

using Words = std::vector<std::string>;

/// Splits at spaces; a part in apostrophes stays whole and loses them.
Words words_of(const std::string& line) {
  static const std::regex word("([^ ']|'[^']*')+");
  Words words;
  for (std::sregex_iterator each(line.begin(), line.end(), word), end; each != end; ++each) {
    words.push_back(each->str());
    std::erase(words.back(), '\'');
  }
  return words;
}

/// The value of "name=value" among the words; "Null" is none.
Variant option(const Words& words, const std::string& name, const std::string& otherwise) {
  std::string value = otherwise;
  for (const std::string& word : words) {
    if (word.starts_with(name + "=")) value = word.substr(name.size() + 1);
  }
  return value == "Null" ? Variant::null() : Variant(value);
}

Variant time_or_null(const std::string& text) {
  return text == "-" ? Variant::null() : Variant(at(text));
}

void add_train(RowWriter& rows, const Words& words) {
  append(rows, "generalita_treni", words[0], words[1], option(words, "if", "TI"),
         option(words, "note", ""), words[2], option(words, "length", "200"), "?", "?", "?", true,
         option(words, "cause", "--"), 7, 140, false);
}

void add_row(RowWriter& rows, const std::string& train, const Words& words) {
  std::string name = words[0];
  std::ranges::replace(name, '_', ' ');
  const Variant arrival = time_or_null(words.at(1));
  const Variant departure = time_or_null(words.at(2));
  append(rows, "circolazione", train, name, arrival, departure, arrival, departure,
         option(words, "dwell", "30"), option(words, "recovery", "0"), option(words, "track", "1"));
}

void fill_station(const std::string& path, std::string_view name) {
  RowWriter rows(path);
  append(rows, "proprieta", 1, name, "EM", "", "line.db", "1,2,3,4");
  append(rows, "enti", 1, "CDB", 11, 10, "stazionamento", 250);
  append(rows, "enti", 2, "CDB", 12, 10, "stazionamento DM", 300);
  append(rows, "enti", 3, "CDB", 13, 10, "linea", 999);
  rows.commit();
}

std::string clock_text(const Variant& time) {
  if (time.is_null()) return "-";
  const DateTime moment{std::chrono::sys_seconds(std::chrono::seconds(to_int32(time)))};
  const auto day = std::chrono::floor<std::chrono::days>(moment.moment()).time_since_epoch();
  return (day.count() == 0 ? "" : std::to_string(day.count()) + "+") + format(moment, "h:nn:ss");
}

class MessageRecorder : public TelephoneWindow {
 public:
  void show(const TelephoneView& view) override {
    // The last line; without a line's end the search gives the greatest number, and 1 more is 0.
    messages().push_back(view.caller + ": " + view.messages.substr(view.messages.rfind('\n') + 1));
  }
  bool closed() override { return false; }
};

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "ravelinox-XXXXXX").string();
  path_ = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code left_behind;  // of no interest to the test
  std::filesystem::remove_all(path_, left_behind);
}

std::string TemporaryFolder::bytes(std::string_view name) const {
  std::ifstream content(file(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(content), {}};
}

std::int32_t at(std::string_view time) {
  std::istringstream text{std::string(time)};
  std::int32_t seconds = 0;
  for (std::int32_t part = 0, unit = 3600; text >> part;) {
    const bool days = text.get() == '+';
    seconds += part * (days ? 86400 : unit);
    if (!days) unit /= 60;
  }
  return seconds;
}

std::vector<std::string>& messages() {
  static std::vector<std::string> seen;
  return seen;
}

void add_timetable(const std::string& line_file, std::string_view timetable) {
  std::string text(timetable);
  std::ranges::replace(text, ';', '\n');
  std::istringstream lines(text);
  RowWriter rows(line_file);
  std::string train;
  for (std::string line; std::getline(lines, line);) {
    const Words words = words_of(line);
    if (words.empty()) continue;
    if (std::isdigit(static_cast<unsigned char>(words[0][0])) != 0) {
      add_train(rows, words);
      train = words[0];
    } else {
      add_row(rows, train, words);
    }
  }
  rows.commit();
}

Station::Station(std::string_view timetable, std::string_view name)
    : surroundings({std::make_shared<ScriptedRandom>(std::vector<float>{0.0F}),
                    folder.path().string(), [] { return std::make_unique<MessageRecorder>(); },
                    nullptr}) {
  create_station_database(station_file);
  create_line_database(line_file);
  fill_station(station_file, name);
  add_timetable(line_file, timetable);
  messages().clear();
  frmTelefonoINdll() = TelephoneForm();
  std::string path = station_file;
  std::ranges::replace(path, '/', '\\');
  engine.DB_stazione = path;
  engine.Nome_PdS = name;
  engine.Connetti_DBstazione_DLL();
  engine.Imposta_proprieta_pds();
  engine.Connetti_DBlinea_DLL();
}

ScriptedRandom& Station::script(std::vector<float> draws) {
  auto source = std::make_shared<ScriptedRandom>(std::move(draws));
  platform().random = source;
  return *source;
}

void Station::change(const std::string& line_statement) const {
  Slot(connect(line_file)).open(line_statement);
}

void Station::change_station(const std::string& station_statement) const {
  Slot(connect(station_file)).open(station_statement);
}

std::string Station::query(const std::string& statement) const {
  return Slot(connect(line_file)).rows(statement);
}

std::vector<std::string> Station::run(std::int32_t train) const {
  Slot rows(connect(line_file));
  rows.open(
      "SELECT Stazione, Orario_arrivo, Orario_partenza, Effettivo_arrivo, Effettiva_partenza FROM "
      "circolazione WHERE Numero = " +
      std::to_string(train) + " ORDER BY Orario_arrivo ASC");
  std::vector<std::string> run;
  for (; !rows.end_of_file(); rows.move_next()) {
    const auto time = [&](std::int16_t column) { return " " + clock_text(rows.value(column)); };
    run.push_back(joined(rows.value(0)) + time(1) + time(2) + " expected" + time(3) + time(4));
  }
  return run;
}

std::string Station::state(std::int32_t train) const {
  return query(
      "SELECT Posizione1, Posizione2, Stato, Velocita, Causa_ritardo FROM generalita_treni WHERE "
      "Numero = " +
      std::to_string(train));
}

}  // namespace ravelinox::testing
