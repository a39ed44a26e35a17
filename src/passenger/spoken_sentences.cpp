// Sentences for a synthesiser: numbers stay in digits, and every space and comma is heard.
#include "passenger/spoken_sentences.hpp"

#include <algorithm>

#include "core/cells.hpp"
#include "passenger/spoken_phrases.hpp"
#include "platform/statement.hpp"
#include "platform/text_file.hpp"

namespace ravelinox {

namespace {

/// "Il treno Regionale 2345," and the undertaking, unless its name is a mere abbreviation.
std::string head(std::string_view opening, const AnnouncedTrain& train) {
  constexpr std::size_t longest_abbreviation = 4;
  std::string text = statement(opening, train.category, train.number, ",");
  // Counted in characters: the code page has one byte for each.
  if (to_code_page(train.undertaking).size() > longest_abbreviation) {
    text += statement(" di ", train.undertaking, ",");
  }
  return text;
}

/// " delle ore 09 e 05,"; a time that is missing cannot be converted and fails.
std::string at_time(const Variant& time, std::string_view hour_pattern) {
  const DateTime moment = to_date_time(to_int32(time));
  return statement(" delle ore ", format(moment, hour_pattern), " e ", format(moment, "nn"), ",");
}

std::string from_origin_to_destination(const AnnouncedTrain& train) {
  return statement(" proveniente da ", train.run.origin(), " e diretto a ",
                   train.run.destination());
}

std::string following_stops(std::string_view stops) {
  if (stops == ".") return "Il treno non effettua fermate intermedie.";
  std::string text = "Ferma a: ";
  for (const char letter : stops) {
    text += letter;
    if (letter == ',') text += ' ';
  }
  return text;
}

}  // namespace

std::optional<std::string> late_minutes(std::string_view delay) {
  constexpr std::size_t sign_and_space = 2;
  if (!delay.starts_with('+')) return std::nullopt;
  const std::string_view minutes = delay.substr(std::min(sign_and_space, delay.size()));
  if (minutes == "0") return std::nullopt;
  return std::string(minutes);
}

std::optional<std::string> delay_sentence(const AnnouncedTrain& train, std::string_view delay) {
  std::string text = head("Annuncio ritardo: il treno ", train);
  text += present(train.departure)
              ? at_time(train.departure, "hh") + from_origin_to_destination(train)
              : " proveniente da " + train.run.origin();
  const auto minutes = late_minutes(delay);
  if (!minutes) return std::nullopt;
  return statement(text, " viaggia con ", *minutes, " minuti di ritardo", spoken_cause(train.cause),
                   ". Ci scusiamo per il disagio.");
}

std::string platform_change_sentence(const AnnouncedTrain& train, const Variant& track,
                                     const Variant& former) {
  std::string text = head("Attenzione: il treno ", train);
  text += present(train.departure)
              ? statement(at_time(train.departure, "hh"), from_origin_to_destination(train),
                          " arriverà e partirà sul binario ", track)
              : statement(" proveniente da ", train.run.origin(), " arriverà sul binario ", track);
  if (!former.is_null()) text += statement(" anzichè sul binario ", former);
  return text;
}

std::string departure_sentence(const AnnouncedTrain& train, std::string_view readiness,
                               std::string_view stops) {
  return statement(head("Il treno ", train), at_time(train.departure, "h"), " per ",
                   train.run.destination(), readiness, train.track, ". ", following_stops(stops));
}

std::string through_arrival_sentence(const AnnouncedTrain& train, std::string_view delay,
                                     std::string_view stops) {
  const auto minutes = late_minutes(delay);
  return statement(
      head("Il treno ", train), at_time(train.arrival, "hh"), from_origin_to_destination(train),
      " arriva e parte sul binario ", train.track,
      minutes ? statement(" con un ritardo di ", *minutes, " minuti. Ci scusiamo per il disagio.")
              : std::string("."),
      "  ", following_stops(stops));
}

std::string last_arrival_sentence(const AnnouncedTrain& train, std::string_view delay) {
  const auto minutes = late_minutes(delay);
  return statement(
      head("Il treno ", train), at_time(train.arrival, "hh"), " proveniente da ",
      train.run.origin(), " è in arrivo sul binario ", train.track,
      minutes
          ? statement(" con un ritardo di ", *minutes,
                      " minuti. Ci scusiamo per il disagio. ATTENZIONE: il treno termina la corsa.")
          : std::string(". Il treno termina la corsa."));
}

std::string transit_sentence(const Variant& track) {
  return statement("Attenzione: treno in transito al binario ", track,
                   ". Non oltrepassare la striscia gialla.");
}

std::string station_sentence(const Variant& station) {
  return statement(station, ", stazione di ", station, ".");
}

}  // namespace ravelinox
