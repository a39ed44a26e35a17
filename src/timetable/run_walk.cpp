// The rows keep their stored differences: the walk never reads a row's own clock time but adds the
// difference between consecutive stored times to a running day time, so a run that crosses
// midnight keeps increasing times.
#include "timetable/run_walk.hpp"

#include <string_view>

#include "core/cells.hpp"
#include "platform/random.hpp"
#include "platform/statement.hpp"
#include "timetable/disturbances.hpp"
#include "timetable/expected_times.hpp"

namespace ravelinox {

namespace {

// Positions of the columns; the first seven are the same for all three lists.
constexpr std::int16_t stazione = 1;
constexpr std::int16_t orario_arrivo = 2;
constexpr std::int16_t orario_partenza = 3;
constexpr std::int16_t effettivo_arrivo = 4;
constexpr std::int16_t effettiva_partenza = 5;
constexpr std::int16_t secondi_fermata = 6;
constexpr std::int16_t recupero_ritardo_today = 7;
constexpr std::int16_t binario_today = 8;
constexpr std::int16_t binario_extraordinary = 7;

/// The time last handled: on the simulated day, and as it was stored.
class DayTime {
 public:
  DayTime(Timestamp midnight, const Variant& first_departure)
      : on_day_(on_day(midnight, first_departure)), stored_(to_int32(first_departure)) {}

  [[nodiscard]] Timestamp value() const { return on_day_; }

  void move_to(Timestamp stored) {
    on_day_ = checked_add(on_day_, checked_subtract(stored, stored_));
    stored_ = stored;
  }

 private:
  Timestamp on_day_;
  Timestamp stored_;
};

enum class Movement : std::uint8_t { absent, outside, placed };

/// Moves the day time to a row's scheduled time, if the row has one, and writes the day time back
/// where it lies inside the window.
template <class Window>
Movement place_scheduled(Recordset& row, DayTime& time, std::int16_t column, Window&& window) {
  const Variant stored = cell(row, column);
  if (!present(stored)) return Movement::absent;
  time.move_to(to_int32(stored));
  if (!window(time.value())) return Movement::outside;
  row.field(column).set_value(time.value());
  return Movement::placed;
}

Recordset& open_rows(cmdl1& engine, std::string_view columns, std::int32_t train) {
  Recordset& rows = *engine.DLLRSMovimL;
  rows.open(statement("SELECT ", columns, " FROM circolazione WHERE Numero = ", train,
                      " ORDER BY Orario_arrivo ASC"));
  return rows;
}

RowTimes times_of(Recordset& row) {
  return {cell(row, orario_arrivo), cell(row, orario_partenza), cell(row, effettivo_arrivo),
          cell(row, secondi_fermata), Variant()};
}

RowTimes times_of_today(Recordset& row) {
  RowTimes times = times_of(row);
  times.recovery = cell(row, recupero_ritardo_today);
  return times;
}

PlacedRow placed_row(Recordset& row, const ListedTrain& train, std::int16_t track_column) {
  return {train.number,
          cell(row, orario_arrivo),
          cell(row, orario_partenza),
          cell(row, effettivo_arrivo),
          cell(row, effettiva_partenza),
          cell(row, track_column)};
}

void place_at_own_station(cmdl1& engine, Recordset& row, const SetUpDay& day,
                          const ListedTrain& train, TrainList list) {
  if (!same_text(cell(row, stazione), engine.Nome_PdS)) return;
  const std::int16_t track = list == TrainList::today ? binario_today : binario_extraordinary;
  place_train(engine, placed_row(row, train, track), list, train.length, day.start);
}

void beep_if(bool outside) {
  if (outside && platform().beep) platform().beep();
}

/// A train of today carries its delay from movement to movement.
class WalkOfToday {
 public:
  WalkOfToday(cmdl1& engine, Recordset& row, const SetUpDay& day, const ListedTrain& train)
      : engine_(engine), row_(row), day_(day), train_(train) {}

  void arrive(DayTime& time) {
    if (place(time, orario_arrivo, effettivo_arrivo, expected_arrival_today)) explain_delay();
  }

  void depart(DayTime& time) {
    if (!place(time, orario_partenza, effettiva_partenza, expected_departure_today)) return;
    running_.expected_departure = checked_add(time.value(), running_.delay);
    explain_delay();
  }

 private:
  template <class Rule>
  bool place(DayTime& time, std::int16_t scheduled, std::int16_t expected, Rule&& rule) {
    const Movement movement = place_scheduled(
        row_, time, scheduled, [&](Timestamp moment) { return moment > day_.first_hour(); });
    beep_if(movement == Movement::outside);
    if (movement != Movement::placed) return false;
    const Timestamp moment = rule(*platform().random, engine_.Global_Puntualita, running_,
                                  time.value(), times_of_today(row_));
    row_.field(expected).set_value(moment);
    running_.delay = checked_subtract(moment, time.value());
    return true;
  }

  void explain_delay() {
    constexpr std::int32_t worth_a_cause = 240;
    if (running_.delay <= worth_a_cause) return;
    if (same_text(cell(row_, stazione), engine_.Nome_PdS)) draw_delay_cause(engine_, train_.number);
  }

  cmdl1& engine_;
  Recordset& row_;
  const SetUpDay& day_;
  const ListedTrain& train_;
  RunningDelay running_;
};

/// The movements of a row of tomorrow's and extraordinary trains, which carry no delay.
template <class Window>
Movement arrive(cmdl1& engine, Recordset& row, DayTime& time, Window&& window) {
  const Movement movement = place_scheduled(row, time, orario_arrivo, window);
  if (movement == Movement::placed) {
    row.field(effettivo_arrivo)
        .set_value(expected_arrival(*platform().random, engine.Global_Puntualita, time.value()));
  }
  return movement;
}

template <class Window>
Movement depart(cmdl1& engine, Recordset& row, DayTime& time, Window&& window) {
  const Movement movement = place_scheduled(row, time, orario_partenza, window);
  if (movement == Movement::placed) {
    row.field(effettiva_partenza)
        .set_value(expected_departure(*platform().random, engine.Global_Puntualita, time.value(),
                                      times_of(row)));
  }
  return movement;
}

/// Tomorrow's walk counts only for a train whose run ends inside the 24 hours.
bool ends_in_time(Recordset& rows, const SetUpDay& day, Timestamp tomorrow) {
  rows.move_last();
  const Timestamp end = on_day(tomorrow, cell(rows, orario_arrivo));
  rows.move_first();
  return end < day.last_hour();
}

}  // namespace

Timestamp on_day(Timestamp midnight, const Variant& stored) {
  return checked_add(midnight, to_date_time(to_int32(stored)).seconds_of_day());
}

void walk_train_of_today(cmdl1& engine, const SetUpDay& day, const ListedTrain& train) {
  Recordset& rows = open_rows(engine,
                              "Numero, Stazione, Orario_arrivo, Orario_partenza, "
                              "Effettivo_arrivo,  Effettiva_partenza, Secondi_fermata, "
                              "Recupero_ritardo, Binario",
                              train.number);
  DayTime time(day.midnight, cell(rows, orario_partenza));
  if (time.value() <= day.first_hour()) return rows.close();
  WalkOfToday walk(engine, rows, day, train);
  for (; !rows.end_of_file(); rows.move_next()) {
    platform().random->reseed();
    walk.arrive(time);
    walk.depart(time);
    place_at_own_station(engine, rows, day, train, TrainList::today);
    rows.update();
  }
  rows.close();
}

void walk_train_of_tomorrow(cmdl1& engine, const SetUpDay& day, const ListedTrain& train) {
  Recordset& rows = open_rows(engine,
                              "Numero, Stazione, Orario_arrivo, Orario_partenza, "
                              "Effettivo_arrivo,  Effettiva_partenza, Secondi_fermata",
                              train.number);
  const Timestamp tomorrow = checked_add(day.midnight, one_day);
  if (!ends_in_time(rows, day, tomorrow)) return rows.close();
  DayTime time(tomorrow, cell(rows, orario_partenza));
  const auto inside = [&](Timestamp moment) { return moment < day.last_hour(); };
  for (; !rows.end_of_file(); rows.move_next()) {
    platform().random->reseed();
    const Movement arrival = arrive(engine, rows, time, inside);
    beep_if(arrival == Movement::outside);
    const Movement departure = depart(engine, rows, time, inside);
    beep_if(departure == Movement::outside);
    if (arrival == Movement::placed && departure == Movement::absent) {
      reset_train(engine, train.number);
      draw_priority(engine, train.number);
    }
    rows.update();
  }
  rows.close();
}

void walk_extraordinary_train(cmdl1& engine, const SetUpDay& day, const ListedTrain& train) {
  Recordset& rows = open_rows(engine,
                              "Numero, Stazione, Orario_arrivo, Orario_partenza, "
                              "Effettivo_arrivo, Effettiva_partenza, Secondi_fermata, Binario",
                              train.number);
  DayTime time(day.midnight, cell(rows, orario_partenza));
  const auto inside = [&](Timestamp moment) { return moment > day.first_hour(); };
  for (; !rows.end_of_file(); rows.move_next()) {
    platform().random->reseed();
    arrive(engine, rows, time, inside);
    depart(engine, rows, time, inside);
    place_at_own_station(engine, rows, day, train, TrainList::extraordinary);
    rows.update();
  }
  rows.close();
}

}  // namespace ravelinox
