// The default voice with a real speech service: started by the voice itself, with a configuration
// of its own and a synthesiser that writes down what it is to say, after a while.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

struct RealSpeechService : ::testing::Test {
  RealSpeechService() {
    const std::string home = folder.path().string();
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"}) {
      setenv(name, home.c_str(), 1);
    }
    unsetenv("SPEECHD_ADDRESS");
    std::filesystem::create_directories(folder.path() / "speech-dispatcher/modules");
    // No sound device is needed: the null driver of the sound library stands for one.
    std::ofstream(folder.path() / ".libao") << "default_driver=null\n";
    std::ofstream(folder.path() / "speech-dispatcher/speechd.conf") << R"(
AudioOutputMethod "libao"
AddModule "scribe" "sd_generic" "scribe.conf"
DefaultModule scribe
Timeout 10
)";
    std::ofstream(folder.path() / "speech-dispatcher/modules/scribe.conf")
        << "GenericExecuteSynth \"sleep 0.2; printf %s \'$DATA\' >> " + home + "/said\""
        << R"(
GenericMaxChunkLength 3000
GenericDelimiters ""
GenericLanguage "en" "en" "utf-8"
GenericDefaultCharset "utf-8"
AddVoice "en" "MALE1" "any"
)";
  }

  ~RealSpeechService() override {
    std::ifstream file(folder.path() / "speech-dispatcher/pid/speech-dispatcher.pid");
    if (pid_t service = 0; file >> service && service > 1) (void)kill(service, SIGTERM);
  }

  /// What has been said since the last time.
  [[nodiscard]] std::string said() const {
    std::ifstream file(folder.path() / "said");
    std::string text{std::istreambuf_iterator<char>(file), {}};
    std::filesystem::remove(folder.path() / "said");
    return text;
  }

  TemporaryFolder folder;
  std::function<std::unique_ptr<Voice>()> default_voice = platform().voice;
};

TEST_F(RealSpeechService, IsStartedAndSaysEveryTextToItsEnd) {
  Station station("1 R ' 3 '\n Empoli - 9:05 track=3\n Forlì 10:00 -");
  platform().voice = default_voice;
  station.engine.AutAsSintesiVocale(1, "Partenza");
  EXPECT_EQ(said(),
            "Il treno Regionale 1, delle ore 9 e 05, per Forlì è in partenza dal binario 3. Il "
            "treno non effettua fermate intermedie.");
  const auto voice = default_voice();
  for (const std::string text :
       {".", "...", "È <b>l'ora</b> & \"$HOME\" `ls` \\n 100% €", "<speak>x</speak>", "  x  "}) {
    voice->speak(text);
    EXPECT_EQ(said(), text);
  }
  voice->speak("");
  EXPECT_EQ(said(), "");
}

}  // namespace
}  // namespace ravelinox::testing
