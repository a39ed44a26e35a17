#include <gtest/gtest.h>

#include <filesystem>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

TEST(EventLog, AppendsRecordsAsTheyStand) {
  Station station("");
  cmdl1& engine = station.engine;
  const std::string log = station.folder.file("log_InizializzaOrario.txt");
  std::filesystem::create_directory(log);
  EXPECT_EQ(error_of([&] { engine.Registra("A"); }), ErrorNumber::path_access_error);
  std::filesystem::remove(log);
  EXPECT_EQ(error_of([&] { engine.Registra(std::shared_ptr<Object>()); }),
            ErrorNumber::type_mismatch);
  EXPECT_TRUE(std::filesystem::exists(log)) << "opened before";
  for (const Variant& info : {Variant("perché \u2013 \u4E2D e\u0301"), Variant("two\r\nlines"),
                              Variant(""), Variant::null(), Variant(12)}) {
    engine.Registra(info);
  }
  EXPECT_EQ(station.folder.bytes(log), "perch\xE9 \x96 ? \xE9\r\ntwo\r\nlines\r\n\r\n\r\n12\r\n");
}

}  // namespace
}  // namespace ravelinox::testing
