#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "passenger/spoken_phrases.hpp"
#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;
using Texts = std::vector<std::string>;

constexpr std::string_view timetable = R"(
712 IC ' 3 ' cause='MV 01'
  Roma - 8:00; Empoli 9:03 9:05 track=4; Siena 9:20 9:22; Pisa 9:30 9:30
  Forlì 9:40 9:41; Milano 10:00 -
2345 R ' 3 ' cause='CS 01' if=FARÙ; Caserta - 7:30; Empoli 8:15 - track='2 bis'
2347 R ' 3 ' if=FARTù; Empoli - 0:05 track=3; Napoli 10:00 -
900 EN ' 3 '; Roma - 8:00; Empoli 9:03 9:05; Milano 10:00 -
901 R ' 3 '; Roma - 8:00; Empoli 9:03 9:03; Milano 10:00 -
902 R ' 3 '; Roma 8:00 8:01; Empoli 9:03 9:05
)";

struct Announcements : ::testing::Test {
  struct RecordingVoice : Voice {
    explicit RecordingVoice(Announcements& at) : listener(at) { ++listener.voices_held; }
    ~RecordingVoice() override { --listener.voices_held; }
    void speak(const std::string& text) override {
      if (listener.failure) throw *listener.failure;
      EXPECT_EQ(listener.engine.DLLRS4->state(), ObjectState::closed) << text;
      listener.heard.push_back(text);
    }
    Announcements& listener;
  };

  Announcements() {
    platform().voice = [this] { return std::make_unique<RecordingVoice>(*this); };
  }

  Station station{timetable};
  cmdl1& engine = station.engine;
  Texts heard;
  int voices_held = 0;
  std::optional<Error> failure;  ///< of the texts to come
  const Variant now{at("8:14")};
  const Variant none = Variant::null();
  const Variant omitted = Variant::missing();
};

TEST_F(Announcements, AreSpokenToTheLetter) {
  station.change(
      "UPDATE circolazione SET Effettiva_partenza = Effettiva_partenza + 840 WHERE Orario_arrivo "
      "IS NULL");
  for (const auto& [procedure, train, first, second, sentence] :
       Table<std::string, std::int32_t, Variant, Variant, std::string>{
           {"Ritardo", 712, now, omitted,
            "Annuncio ritardo: il treno Intersiti 712, delle ore 09 e 05, proveniente da Roma e "
            "diretto a Milano viaggia con 10 minuti di ritardo causa guasto tecnico al materiale "
            "rotabile. Ci scusiamo per il disagio."},
           {"Ritardo", 2345, now, omitted,
            "Annuncio ritardo: il treno Regionale 2345, proveniente da Caserta viaggia con 10 "
            "minuti di ritardo causa eccessiva affluenza di viaggiatori nelle stazioni "
            "precedenti. Ci scusiamo per il disagio."},
           {"Cambio binario", 712, std::int16_t{7}, none,
            "Attenzione: il treno Intersiti 712, delle ore 09 e 05, proveniente da Roma e diretto "
            "a Milano arriverà e partirà sul binario 7"},
           {"Cambio binario", 2345, "1 tronco", "2 bis",
            "Attenzione: il treno Regionale 2345, proveniente da Caserta arriverà sul binario 1 "
            "tronco anzichè sul binario 2 bis"},
           {"Partenza", 712, omitted, omitted,
            "Il treno Intersiti 712, delle ore 9 e 05, per Milano è in partenza dal binario 4. "
            "Ferma a: Siena, Forlì, ."},
           {"Pronto", 2347, omitted, omitted,
            "Il treno Regionale 2347, di FARTù, delle ore 0 e 05, per Napoli è pronto sul binario "
            "3. Il treno non effettua fermate intermedie."},
           {"Arrivo", 712, now, omitted,
            "Il treno Intersiti 712, delle ore 09 e 03, proveniente da Roma e diretto a Milano "
            "arriva e parte sul binario 4 con un ritardo di 10 minuti. Ci scusiamo per il "
            "disagio.  Ferma a: Siena, Forlì, ."},
           {"Arrivo", 712, at("7:59"), omitted,
            "Il treno Intersiti 712, delle ore 09 e 03, proveniente da Roma e diretto a Milano "
            "arriva e parte sul binario 4.  Ferma a: Siena, Forlì, ."},
           {"Arrivo", 2345, now, omitted,
            "Il treno Regionale 2345, delle ore 08 e 15, proveniente da Caserta è in arrivo sul "
            "binario 2 bis con un ritardo di 10 minuti. Ci scusiamo per il disagio. ATTENZIONE: "
            "il treno termina la corsa."},
           {"Arrivo", 2345, at("7:00"), omitted,
            "Il treno Regionale 2345, delle ore 08 e 15, proveniente da Caserta è in arrivo sul "
            "binario 2 bis. Il treno termina la corsa."},
           {"Transito", 0, "3", omitted,
            "Attenzione: treno in transito al binario 3. Non oltrepassare la striscia gialla."},
           {"Stazione", 0, "Forlì", omitted, "Forlì, stazione di Forlì."},
           {"arrivo", 712, omitted, omitted, ""}}) {
    heard.clear();
    engine.AutAsSintesiVocale(train, procedure, first, second);
    EXPECT_EQ(heard, Texts{sentence}) << procedure << " " << train;
  }
  EXPECT_EQ(voices_held, 0);
}

TEST_F(Announcements, EndInSilenceOrWithAnErrorAndLeaveTheSlotFree) {
  constexpr std::optional<ErrorNumber> silence;
  for (const auto& [procedure, train, first, error] :
       Table<const char*, std::int32_t, Variant, std::optional<ErrorNumber>>{
           {"Arrivo", 900, omitted, silence},  // a category that is not announced
           {"Arrivo", 901, omitted, silence},  // passes without stopping
           {"Ritardo", 712, now, silence},     // on time
           {"Partenza", 999, omitted, no_current_record},
           {"Partenza", 902, omitted, subscript_out_of_range},
           {"Partenza", 2345, omitted, invalid_use_of_null},
           {"Arrivo", 712, omitted, type_mismatch},
           {"Cambio binario", 712, "7", type_mismatch}}) {
    EXPECT_EQ(error_of([&] { engine.AutAsSintesiVocale(train, procedure, first, omitted); }), error)
        << procedure << " " << train;
    EXPECT_EQ(engine.DLLRS4->state(), ObjectState::closed) << procedure << " " << train;
    EXPECT_EQ(voices_held, 0);
  }
  EXPECT_EQ(heard, Texts{});
}

TEST_F(Announcements, TakeTheVoiceFirstAndReportOneThatFails) {
  failure = Error(speech_failure, "hoarse");
  EXPECT_EQ(error_of([&] { engine.AutAsSintesiVocale(712, "Partenza"); }), speech_failure);
  EXPECT_EQ(engine.DLLRS4->state(), ObjectState::closed);
  platform().voice = [] { return nullptr; };
  EXPECT_EQ(error_of([] { cmdl1().AutAsSintesiVocale(712, "Arrivo"); }), cannot_create_object);
  platform().voice = nullptr;
  EXPECT_EQ(error_of([] { cmdl1().AutAsSintesiVocale(0, "?"); }), cannot_create_object);
}

TEST_F(Announcements, DrawTheGeneralMessages) {
  auto& random = station.script({0.0F, 0.3344F, 0.3345F, 0.6688F, 0.669F, 0.99999994F});
  for (int call = 0; call < 6; ++call) engine.AutAsSintesiVocale(0, "Comunicazioni generali");
  const auto& [crossing, stripe, luggage] = general_messages;
  const std::string_view expected[]{crossing, crossing, stripe, stripe, luggage, luggage};
  EXPECT_TRUE(std::ranges::equal(heard, expected));
  EXPECT_EQ(random.draws, 6U);
  EXPECT_EQ(random.reseedings, 0U);
}

TEST_F(Announcements, FindTheVoiceDataInTheComponentFolderOnly) {
  const TemporaryFolder elsewhere;
  const std::string data = station.folder.file("Loq.Roberto.tts");
  std::ofstream(elsewhere.file("Loq.Roberto.tts")) << "x";
  engine.App_path = elsewhere.path().string();
  EXPECT_FALSE(engine.VerificaAs());
  std::filesystem::create_directory(data);
  EXPECT_FALSE(engine.VerificaAs());
  std::filesystem::remove(data);
  std::ofstream(data) << "x";
  EXPECT_TRUE(engine.VerificaAs());
}

TEST(SpokenPhrases, CausesByGroupAndByCode) {
  for (const auto& [code, phrase] : Table<const char*, const char*>{
           {"CT 02", " causa ritardo treno corrispondente"},
           {"ES 04", " eventi accidentali verificatisi lungo il percorso del treno"},
           {"ES 01", ""},
           {"ES 033", ""},
           {"cs 01", ""}}) {
    EXPECT_EQ(spoken_cause(code), phrase) << code;
  }
}

}  // namespace
}  // namespace ravelinox::testing
