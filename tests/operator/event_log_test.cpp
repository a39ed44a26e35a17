#include <gtest/gtest.h>

#include <filesystem>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

constexpr const char* log_name = "log_InizializzaOrario.txt";

TEST(EventLog, AppendsRecordsAsTheyStand) {
  Station station("");
  cmdl1& engine = station.engine;
  EXPECT_EQ(error_of([&] { engine.Registra(std::shared_ptr<Object>()); }),
            ErrorNumber::type_mismatch);
  EXPECT_TRUE(std::filesystem::exists(station.folder.file(log_name))) << "opened before";
  for (const Variant& info : {Variant("perché \u2013 \u4E2D e\u0301"), Variant("two\r\nlines"),
                              Variant(""), Variant::null(), Variant(12)}) {
    engine.Registra(info);
  }
  EXPECT_EQ(station.folder.bytes(log_name),
            "perch\xE9 \x96 ? \xE9\r\ntwo\r\nlines\r\n\r\n\r\n12\r\n");
}

TEST(EventLog, AFolderInTheFilesPlaceIsAnError) {
  Station station("");
  std::filesystem::create_directory(station.folder.file(log_name));
  EXPECT_EQ(error_of([&] { station.engine.Registra("A"); }), ErrorNumber::path_access_error);
}

}  // namespace
}  // namespace ravelinox::testing
