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
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"}) {
      setenv(name, folder.path().c_str(), 1);
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
    std::ofstream(folder.path() / "speech-dispatcher/modules/scribe.conf") << R"(
GenericExecuteSynth "sleep 0.2; printf %s \'$DATA\' >> $HOME/said"
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
};

TEST_F(RealSpeechService, IsStartedAndSaysEveryTextToItsEnd) {
  const auto voice = platform().voice();
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
