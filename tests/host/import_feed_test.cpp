// A small made-up feed that holds the traps which publishers lay, read as one.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "host/import/import.hpp"
#include "host/import/trains.hpp"
#include "text_feed.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;
using Files = std::map<std::string, std::string>;

// Own station: Borgo, a station with two platforms, one of them named by the feed. 2026-04-05 is
// Easter, the feed runs from Wednesday 1 to Thursday 30 April.
Files traps() {
  return {
      {"agency.txt", "agency_id,agency_name\n1,FERROVIA S.p.A.\n"},
      {"routes.txt",
       "route_id,agency_id,route_short_name,route_long_name,route_type\n"
       "r,1,R,\"Alpe, Borgo\",2\nbus,1,9,,3\n"},
      {"stops.txt",
       "\xEF\xBB\xBF"
       "parent_station,stop_name,stop_id,platform_code,stop_lat,stop_lon\r\n"
       ",Alpe,a,,44.00,11.00\r\n"
       ",\"Borgo, d'Arno\",b,,44.05,11.00\r\n"
       "b,Borgo Binario 7,b7,7,44.05,11.00\r\n"
       "b,Borgo Binario X,bx,,44.05,11.00\r\n"
       ",Colle,c,,44.10,11.00\r\n"
       ",Colle,c2,,45.10,12.00\r\n"  // another place of the same name
       ",Colle,c3,,44.10,11.00\r\n"  // the same place under another id
       ",Valle,v,,44.08,11.00\r\n"},
      {"calendar.txt",
       "service_id,monday,tuesday,wednesday,thursday,friday,saturday,sunday,start_date,end_date\n"
       "work,1,1,1,1,1,0,0,20260401,20260430\n"
       "free,0,0,0,0,0,1,1,20260401,20260430\n"
       "never,0,0,0,0,0,0,0,20260401,20260430\n"},
      {"calendar_dates.txt",
       "date,service_id,exception_type\n20260406,work,2\n20260406,free,1\n20260410,once,1\n"},
      {"trips.txt",
       "trip_id,route_id,service_id,trip_short_name\n"
       "t1,r,work,0101\nt2,r,free,0101\nt3,r,once,0101\nt4,r,work,102*103\nt5,r,work,RX\n"
       "t6,r,never,106\nt7,bus,work,107\nt8,r,work,108\nt9,r,work,109\nt10,r,work,\n"
       "t11,lost,work,111\nt12,r,free,0101\n"},
      // Last to first, so that no reader may count on an order.
      {"stop_times.txt",
       "departure_time,arrival_time,trip_id,stop_sequence,stop_id,pickup_type,drop_off_type\n"
       "8:20:00,8:20:00,t1,30,c,,\n8:10:00,8:10:00,t1,20,b7,,\n8:00:00,8:00:00,t1,10,a,,\n"
       "8:20:00,8:20:00,t2,3,c,,\n8:10:00,8:10:00,t2,2,b7,,\n8:00:00,8:00:00,t2,1,a,,\n"
       "9:20:00,9:20:00,t3,3,c3,,\n9:10:00,9:10:00,t3,2,bx,,\n9:00:00,9:00:00,t3,1,a,,\n"
       "8:22:00,8:22:00,t4,3,c2,,\n8:11:00,8:11:00,t4,2,bx,1,1\n8:00:00,8:00:00,t4,1,a,,\n"
       "24:50:00,24:50:00,t5,2,c,,\n24:30:00,24:30:00,t5,1,b,,\n"
       "8:20:00,8:20:00,t6,2,c,,\n8:10:00,8:10:00,t6,1,b,,\n"
       "8:20:00,8:20:00,t7,2,c,,\n8:10:00,8:10:00,t7,1,b,,\n"
       "8:20:00,8:20:00,t8,2,gone,,\n8:10:00,8:10:00,t8,1,b,,\n"
       "8:20:00,8 Uhr,t9,2,c,,\n8:10:00,8:10:00,t9,1,b,,\n"
       "8:30:00,8:30:00,t10,4,a,,\n,,t10,3,v,,\n8:12:00,8:10:00,t10,2,bx,,\n8:00:00,8:00:00,t10,1,"
       "c,,\n"
       "8:20:00,8:20:00,t11,2,c,,\n8:10:00,8:10:00,t11,1,b,,\n"
       "8:20:00,8:20:00,t12,3,c,,\n8:10:00,8:10:00,t12,2,b7,,\n8:00:00,8:00:00,t12,1,a,,\n"},
  };
}

ImportSummary summary;  // of the last import

Timetable imported(const Files& files, const std::string& station) {
  ImportOptions options;
  options.station = station;
  summary = {};
  return read_timetable(TextFeed(files), options, {}, summary);
}

TEST(Feed, GivesEachTripItsTrainOrAReason) {
  std::map<std::string, std::string> trains;  // days and calls by number
  for (const auto& [table, values] : train_rows(imported(traps(), "BORGO D ARNO"))) {
    std::string& train = trains[to_text(values[0])];
    if (table == "generalita_treni") {
      train = "(" + to_text(values[4]) + ")";
      EXPECT_EQ(values[2], Variant("Ferrovia"));
      EXPECT_TRUE(std::ranges::none_of(values, &Variant::is_null));
      continue;
    }
    train += " | " + joined(values[1]);
    for (const std::size_t i : {2U, 3U, 8U}) train += " " + joined(values[i]);
    EXPECT_EQ(values[2], values[4]);
    EXPECT_EQ(values[3], values[5]);
    EXPECT_TRUE(std::none_of(values.begin() + 6, values.end(), std::mem_fn(&Variant::is_null)));
  }
  // t12 is t1 on other days and joins it; t2, on the same days as t12, stays a train of its own.
  // t4 and t10 meet t1 at Borgo, where the feed names the track of t1 and t2 alone.
  const std::map<std::string, std::string> expected{
      {"101",
       "( 0 1 2 3 4 5 6 ) | Alpe  115200 1 | Borgo d’Arno 115800 115830 7 | Colle 116400  1"},
      {"2101", "( 0 6 0604 ) | Alpe  115200 1 | Borgo d’Arno 115800 115830 7 | Colle 116400  1"},
      {"3101", "( 1004 ) | Alpe  118800 1 | Borgo d’Arno 119400 119430 2 | Colle 120000  1"},
      {"102",
       "( 1 2 3 4 5 eF ) | Alpe  115200 1 | Borgo d’Arno 115860 115860 2 | Colle (2) 116520  1"},
      {"1001",
       "( 1 2 3 4 5 eF ) | Colle  115200 2 | Borgo d’Arno 115800 115920 1 "
       "| Valle 116460 116490 2 | Alpe 117000  2"},
      {"1002", "( 2 3 4 5 6 e0704 e0104 ) | Borgo d’Arno  88200 7 | Colle 89400  1"}};
  EXPECT_EQ(trains, expected);
  EXPECT_EQ(summary.trips, 12U);
  EXPECT_EQ(summary.dropped.total(), 5U) << summary.dropped.text();
  for (const char* reason : {"runs on no day", "a tram, a bus", "stop_id \"gone\"",
                             "arrival_time \"8 Uhr\"", "route_id \"lost\""}) {
    EXPECT_NE(summary.dropped.text().find(reason), std::string::npos) << reason;
  }
}

void expect_refusal(const Files& files, const std::string& station, const std::string& part) {
  const std::string refusal = refusal_of([&] { return imported(files, station); });
  EXPECT_NE(refusal.find(part), std::string::npos) << refusal;
  EXPECT_EQ(refusal.empty(), part.empty()) << station;
}

TEST(Feed, NamesTheStationsThatCouldBeMeant) {
  expect_refusal(traps(), "Borg", "near it: \"Borgo d’Arno\" (stop b)");
  expect_refusal(traps(), "borgo d’urno", "\"Borgo d’Arno\"");
  expect_refusal(traps(), "Colle", "(stop c), \"Colle\" (stop c2)");
  expect_refusal(traps(), "Xyz", "nor one with a similar name");
  expect_refusal(traps(), "c2", "");
}

TEST(Feed, RefusesWhatIsNoFeed) {
  const char* const missing = nullptr;
  for (const auto& [file, text, part] : Table<const char*, const char*, const char*>{
           {"stops.txt", missing, "no file stops.txt"},
           {"stops.txt", "stop_name\n", "no column stop_id"},
           {"stops.txt", "stop_id,stop_name\nb,Borgo d'Arno\nb,B\n", "line 3, stop_id \"b\""},
           {"stop_times.txt", "trip_id\n", "stop_times.txt, line 1"},
           {"routes.txt", "route_id,route_type\nr,rail\n", "route_type \"rail\""},
           {"routes.txt", "route_id,route_type\nr,3\n", "No train calls at Borgo d’Arno"},
           {"trips.txt", "trip_id,route_id,service_id\nt1,r,work\nt1,r,work\n", "second trip"},
           {"agency.txt", missing, ""}}) {
    Files files = traps();
    files.erase(file);
    if (text != missing) files[file] = text;
    expect_refusal(files, "Borgo d'Arno", part);
  }
}

}  // namespace
}  // namespace ravelinox::host
