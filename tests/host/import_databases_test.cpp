// The whole way from a feed on the disk to databases that the component can use.
#include <gtest/gtest.h>
#include <zip.h>

#include <fstream>

#include "host/import/extract.hpp"
#include "host/import/import.hpp"
#include "host/refusal.hpp"
#include "support/slot.hpp"
#include "support/station.hpp"

namespace ravelinox::host {
namespace {

using namespace ravelinox::testing;

namespace fs = std::filesystem;

const fs::path bundled = RAVELINOX_EMPOLI_FEED;

class ImportedDatabases : public ::testing::Test {
 protected:
  ImportOptions options(const fs::path& feed) const {
    ImportOptions result;
    result.feed = feed;
    result.station = "empoli";
    result.out = folder.file("out");
    return result;
  }

  static std::size_t files_in(const fs::path& path) {
    std::error_code missing;
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(path, missing), {}));
  }

  /// The bundled feed zipped, with its files in a folder of the archive.
  fs::path zipped() const {
    int error = 0;
    zip_t* archive = zip_open(folder.file("feed.zip").c_str(), ZIP_CREATE, &error);
    for (const auto& file : fs::directory_iterator(bundled)) {
      zip_file_add(archive, ("feed/" + file.path().filename().string()).c_str(),
                   zip_source_file(archive, file.path().c_str(), 0, -1), 0);
    }
    EXPECT_EQ(zip_close(archive), 0);
    return folder.file("feed.zip");
  }

  const ravelinox::testing::TemporaryFolder folder;
  ImportSummary summary;
};

TEST_F(ImportedDatabases, HoldEveryTrainOfTheStation) {
  auto with_demand = options(zipped());
  with_demand.on_demand = 5;
  import_feed(with_demand, {}, summary);
  EXPECT_EQ(summary.trips, 246U);
  EXPECT_TRUE(summary.dropped.empty());
  EXPECT_EQ(files_in(with_demand.out), 2U);
  Slot slot(connect(summary.line_database));
  for (const auto& [from, rows] : Table<std::string, std::int32_t>{
           {"generalita_treni", 251},
           {"generalita_treni WHERE Giorni = ''", 5},
           {"circolazione WHERE Stazione = 'EMPOLI'", 251},
           {"circolazione WHERE Orario_arrivo IS NULL", 251},
           {"accessi WHERE Nome_stazione = 'Empoli' AND Lista_accessi = "
            "'1|Montelupo  2|Ponte A Elsa  3|S.Miniato F.'",
            1}}) {
    slot.open("SELECT * FROM " + from);
    EXPECT_EQ(slot.record_count(), rows) << from;
    slot.close();
  }
}

TEST_F(ImportedDatabases, AreNotReplacedUnlessAsked) {
  auto once = options(bundled);
  import_feed(once, {}, summary);
  EXPECT_EQ(error_of([&] { import_feed(once, {}, summary); }), ErrorNumber::file_already_exists);
  once.force = true;
  once.station = "nowhere";
  EXPECT_THROW(import_feed(once, {}, summary), Refusal);
  EXPECT_EQ(files_in(once.out), 2U) << "a failure leaves the old ones";
  once.station = "Pisa C.Le";
  import_feed(once, {}, summary);
  EXPECT_EQ(summary.station, "Pisa C.Le");
}

TEST_F(ImportedDatabases, AreNotThereAfterAFailure) {
  const fs::path junk = folder.file("junk.zip");
  std::ofstream(junk) << "PK, but nothing else";
  const fs::path cut = zipped();
  fs::resize_file(cut, fs::file_size(cut) / 2);
  for (const fs::path& feed : {junk, cut, folder.path() / "missing", folder.path()}) {
    EXPECT_THROW(import_feed(options(feed), {}, summary), Refusal) << feed;
    EXPECT_EQ(files_in(folder.file("out")), 0U);
  }
  std::ofstream(folder.file("out")) << "a file where the folder should be";
  EXPECT_THROW(import_feed(options(bundled), {}, summary), Error);
}

TEST_F(ImportedDatabases, AreTheSameFromTheStationsPartOfTheFeed) {
  auto part = options(zipped());
  part.out = folder.file("part");
  extract_feed(part, {});
  ImportSummary part_summary;
  import_feed(options(part.feed), {}, summary);
  auto from_part = options(part.out);
  from_part.out = folder.file("again");
  import_feed(from_part, {}, part_summary);
  EXPECT_EQ(part_summary.trains, summary.trains);
  EXPECT_EQ(part_summary.calls, summary.calls);
  EXPECT_EQ(part_summary.adapted.text(), summary.adapted.text());
  EXPECT_THROW(extract_feed(part, {}), Refusal) << "its files are there already";
}

}  // namespace
}  // namespace ravelinox::host
