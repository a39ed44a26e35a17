// Every text here is spoken letter for letter, odd spellings and missing spaces included: hosts
// compare sentences with them.
#include "passenger/spoken_phrases.hpp"

namespace ravelinox {

namespace {

struct Phrase {
  std::string_view code;
  std::string_view text;
};

constexpr std::array<Phrase, 24> categories{{{"ES*", "Eurostar Italia "},
                                             {"ES* AV", "Eurostar Italia A vù"},
                                             {"Tbiz", "Ti Biz "},
                                             {"Tok", "Trenokey "},
                                             {"IC", "Intersiti "},
                                             {"ICN", "Intersiti notte"},
                                             {"EC", "Eurositi "},
                                             {"ICp", "Intersiti plus "},
                                             {"EXP", "Espresso "},
                                             {"D", "Diretto "},
                                             {"IR", "Interregionale "},
                                             {"R", "Regionale "},
                                             {"S", "Suburbano "},
                                             {"LOC", "Locale "},
                                             {"RAP", "Rapido "},
                                             {"MET", "Metropolitano "},
                                             {"LIS", "Locomotiva Isolata "},
                                             {"MRV", "Merci rapido veloce "},
                                             {"MRS", "Merci rapido speciale "},
                                             {"TC", "del traffico intermodale "},
                                             {"TEC", "Euro Conteiner "},
                                             {"Invio", "Invio "},
                                             {"Tradotta", "Tradotta "},
                                             {"NCLS", "Non classificato "}}};

/// By the two letters that open a cause code.
constexpr std::array<Phrase, 5> cause_groups{
    {{"CS", " causa eccessiva affluenza di viaggiatori nelle stazioni precedenti"},
     {"CT", " causa ritardo treno corrispondente"},
     {"MV", " causa guasto tecnico al materiale rotabile"},
     {"MS", " causa guasto al locomotore"},
     {"II", " causa perturbazione del traffico ferroviario"}}};

/// By the whole cause code.
constexpr std::array<Phrase, 6> causes{
    {{"ES 02", " causa ritardo maturato sulla rete estera"},
     {"ES 03", " causa accertamenti richiesti dall'autorità giudiziaria"},
     {"ES 04", " eventi accidentali verificatisi lungo il percorso del treno"},
     {"ES 05", " causa avverse condizioni meteorologiche"},
     {"IS 10", " causa gausto agli apparati tecnologici"},
     {"IE 10", " causa inconveniente ai dispositivi di erogazione dell'energia elettrica"}}};

template <std::size_t N>
std::optional<std::string_view> find(const std::array<Phrase, N>& phrases, std::string_view code) {
  for (const Phrase& phrase : phrases) {
    if (phrase.code == code) return phrase.text;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string_view> spoken_category(std::string_view code) {
  return find(categories, code);
}

std::string spoken_cause(std::string_view code) {
  return std::string(find(cause_groups, code.substr(0, 2)).value_or("")) +
         std::string(find(causes, code).value_or(""));
}

const std::array<std::string_view, 3> general_messages{
    "Attenzione: Si avvisano i signori viaggiatori che è vietato attraversare i binari: servirsi "
    "degli appositi sottopassaggi.",
    "Attenzione: Si avvisano i signori viaggiatori che è vietato oltrepassare la striscia gialla "
    "in attesa dei treni.",
    "Attenzione: Si inviatano i signori viaggiatori a prendersi cura dei propri bagagli e a non "
    "lasciarli incustoditi. I bagagli incustoditi saranno sottoposti a controlli di polizia "
    "ferroviaria."};

}  // namespace ravelinox
