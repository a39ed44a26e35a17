#include <gtest/gtest.h>

#include "interlocking/aspect.hpp"
#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;

/// A station with one route of class RV to access 2, towards Pontedera.
struct Junction : Station {
  Junction() : Station("") {
    append(station_file, "itinerari", 1, "I-4", "", "", "", "", 0, "S1|RV S2|V", "", 2);
    append(line_file, "accessi", 1, "1|Montelupo  2|Pontedera", "Empoli");
  }

  void add_section(const char* end1, const char* end2, const char* letter1, const char* letter2,
                   const Variant& variant2) {
    append(line_file, "linea", 1, end1, end2, 1.0, 1, "", letter1, false, "", true, "", "", letter2,
           variant2);
  }

  /// Works out what the signal shows, and tells both answers.
  std::string aspect(const Variant& signal = "S1") {
    engine.C_Sgn("i-4", signal);
    return joined(engine.Aspetto_sgn) + (engine.Ric_sgn ? ", changed" : "");
  }
};

TEST(SignalAspects, TheOwnEndOfTheSectionCounts) {
  Junction first;
  first.add_section("Empoli", "Pontedera", "R", "V", false);
  EXPECT_EQ(first.aspect(), "S1|RG, changed");

  Junction second;
  second.add_section("Pontedera", "Empoli", "R", "G", true);
  EXPECT_EQ(second.aspect(), "S1|RGx, changed");

  Junction ambiguous;
  ambiguous.add_section("Empoli", "Pontedera", "R", "R", false);
  ambiguous.add_section("Empoli", "Pontedera", "R", "R", false);
  ambiguous.add_section("Pontedera", "Empoli", "R", "G", Variant::null());
  EXPECT_EQ(ambiguous.aspect(), "S1|RV");
}

TEST(SignalAspects, WhatStaysUntouched) {
  Junction junction;
  junction.add_section("Empoli", "Pontedera", "x", "V", false);
  junction.engine.Aspetto_sgn = "before";
  junction.engine.Ric_sgn = true;
  EXPECT_EQ(junction.aspect("S1"), "before, changed");
  EXPECT_EQ(junction.aspect(Variant::null()), "before, changed");
  // Another signal shows the route's class, whatever the line.
  EXPECT_EQ(junction.aspect("s1"), "s1|RV, changed");
  EXPECT_EQ(junction.aspect(Variant::missing()), "|RV, changed");
}

TEST(SignalAspects, FailuresKeepBothAnswersAndTheSlot) {
  for (const auto& [change, error, line_slot] : Table<std::string, ErrorNumber, bool>{
           {"itinerari SET Nome = 'x'", no_current_record, false},
           {"itinerari SET Segnali = 'S1 S2|V'", subscript_out_of_range, false},
           {"accessi SET Nome_stazione = 'x'", no_current_record, true},
           {"itinerari SET Accesso = 3", no_current_record, true},
           {"accessi SET Lista_accessi = 'x|A  2|Pontedera'", type_mismatch, false},
           {"accessi SET Lista_accessi = '1|A    2|Pontedera'", type_mismatch, false}}) {
    Junction junction;
    junction.add_section("Empoli", "Pontedera", "R", "V", false);
    if (change.starts_with("itinerari")) {
      junction.change_station("UPDATE " + change);
    } else {
      junction.change("UPDATE " + change);
    }
    junction.engine.Aspetto_sgn = "before";
    EXPECT_EQ(error_of([&] { junction.engine.C_Sgn("I-4", "S1"); }), error) << change;
    EXPECT_EQ(junction.engine.Aspetto_sgn, Variant("before")) << change;
    EXPECT_FALSE(junction.engine.Ric_sgn) << change;
    EXPECT_EQ(junction.engine.DLLRS3->state() == ObjectState::open, line_slot) << change;
  }
}

TEST(Aspect, TheWholeTable) {
  for (const auto& [route_class, at_variant, at_stop, known] :
       Table<const char*, const char*, const char*, bool>{{"V", "Gx", "G", true},
                                                          {"RV", "RGx", "RG", true},
                                                          {"RV-", "RGx-", "RG-", true},
                                                          {"RV=", "RGx=", "RG=", true},
                                                          {"rv", "Gx", "G", false}}) {
    const Aspect own{route_class, false};
    EXPECT_EQ(route_aspect(route_class, "V", true), own) << route_class;
    EXPECT_EQ(route_aspect(route_class, "G", false), own) << route_class;
    EXPECT_EQ(route_aspect(route_class, "G", true), (Aspect{at_variant, true}));
    EXPECT_EQ(route_aspect(route_class, "R", true), (Aspect{at_stop, true}));
    EXPECT_EQ(route_aspect(route_class, "v", false), known ? std::nullopt : std::optional(own));
  }
}

}  // namespace
}  // namespace ravelinox::testing
