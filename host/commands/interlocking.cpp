// ravelinox signal, consent and maintenance: what the signal box asks.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/attempt.hpp"
#include "host/commands/commands.hpp"
#include "host/refusal.hpp"
#include "host/rows.hpp"
#include "host/text_table.hpp"

namespace ravelinox::host {
namespace {

struct SignalArguments {
  std::string route, signal;
  std::string station = ".";
};

/// The route's origin signal, which is asked about when none is named.
std::string origin_signal(StationSession& station, const std::string& route) {
  std::string signals;
  each_row(*station.component.DLLRS2,
           "SELECT Segnali FROM itinerari WHERE Nome = " + literal(route),
           [&](Recordset& row) { signals = text_at(row, 0); });
  if (signals.empty()) throw Refusal("The station has no route " + route + ".");
  return signals.substr(0, signals.find('|'));
}

int show_signal(const SignalArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  cmdl1& component = station.component;
  const std::string origin = origin_signal(station, arguments.route);
  component.C_Sgn(arguments.route, arguments.signal.empty() ? origin : arguments.signal);
  const std::string answer = joined(component.Aspetto_sgn);
  console.out << "Route " << arguments.route << ": signal " << answer.substr(0, answer.find('|'))
              << " shows " << answer.substr(answer.find('|') + 1)
              << (component.Ric_sgn ? ", changed by the line" : "") << '\n';
  return 0;
}

struct ConsentArguments {
  std::string from, to;
  std::string station = ".";
};

int show_consent(const ConsentArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  station.component.VerRich_fs(arguments.from, arguments.to);
  console.out << arguments.from << (station.component.RispRich_fs ? " grants" : " refuses")
              << " a request over the section to " << arguments.to << '\n';
  return 0;
}

struct MaintenanceArguments {
  std::string station = ".";
  std::int16_t wear_entity = 0;
  std::int16_t fault_chance = 100;
};

int show_maintenance(const MaintenanceArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  cmdl1& component = station.component;
  if (arguments.wear_entity != 0) {
    component.Global_ProbabilitaGuasti = arguments.fault_chance;
    component.DecrementaManutenzione(Variant::missing(), 0, arguments.wear_entity);
  }
  Attempt attempt(component, console);
  std::vector<std::vector<std::string>> rows;
  each_row(*component.DLLRS2, "SELECT ID, Tipo_ente, Numero FROM enti ORDER BY ID",
           [&](Recordset& row) {
             attempt("Entity " + text_at(row, 0), [&] {
               const std::int16_t id = to_int16(row.field(0).value());
               const float state = component.RicavaStatoManutenzione(Variant::missing(), 0, id);
               rows.push_back(
                   {text_at(row, 0), text_at(row, 1), text_at(row, 2), to_text(Variant(state))});
             });
           });
  for (const std::string& line : table_lines({{"ID"}, {"Entity"}, {"Number"}, {"State"}}, rows)) {
    console.out << line << '\n';
  }
  return attempt.failures() == 0 ? 0 : 1;
}

}  // namespace

void add_signal_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<SignalArguments>();
  CLI::App* command = program.add_subcommand("signal", "Tells what a route's signal shows");
  command->add_option("ROUTE", arguments->route, "The route's name")->required();
  add_station_argument(*command, arguments->station);
  command->add_option("--signal", arguments->signal, "One of its signals [the origin signal]");
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return show_signal(*arguments, console); };
  });
}

void add_consent_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<ConsentArguments>();
  CLI::App* command = program.add_subcommand(
      "consent", "Tells whether a station grants a request over the section to its neighbour");
  command->add_option("FROM", arguments->from, "The station that is asked")->required();
  command->add_option("TO", arguments->to, "Its neighbour on the section")->required();
  add_station_argument(*command, arguments->station);
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return show_consent(*arguments, console); };
  });
}

void add_maintenance_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<MaintenanceArguments>();
  CLI::App* command =
      program.add_subcommand("maintenance", "Lists the station's entities and their states");
  add_station_argument(*command, arguments->station);
  command->add_option("--wear", arguments->wear_entity, "First wears the entity with this ID");
  command->add_option("--faults", arguments->fault_chance, "How fast entities wear")
      ->capture_default_str();
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return show_maintenance(*arguments, console); };
  });
}

}  // namespace ravelinox::host
