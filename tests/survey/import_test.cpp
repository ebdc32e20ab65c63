// Field books through the survey library.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <utility>

#include "brenu/brenu.hpp"
#include "support/temp_file.h"

namespace brenu::testing {
namespace {

// B from A due east at 100 m, 60 degrees from the zenith, instrument and target 1.5 m high.
const char* const kBook =
    "110001+0000000A 84..10+00100000 85..10+00200000 88..10+00001500\n"
    "110002+0000000B 21.322+10000000 22.323+06000000 31..00+00100000 87..10+00001500\n"
    "110003+0000000A 21.322+10000000\n";

TEST(Import, IntoContexts) {
  const TempFile book(kBook);
  const TempFile control("B,1,2,3\n");
  const TempFile log;
  Context job;
  Context heights;
  brenu_import_options options = {BRENU_TRIG_HEIGHTS | BRENU_ELLIPSOID, 0, 0, 0, 0, 637.1, 0};
  job.Import({book.Path()}, control.Path(), &heights, &options);
  ASSERT_EQ(job.PointCount(), 2U);
  // 100 sin 60 at 637.1 m on 6371 km; 100 cos 60.
  const auto distance = [](const Context& context) {
    brenu_pair pair = {};
    EXPECT_TRUE(brenu_next_observation(context.Get(), &pair));
    return pair.observation;
  };
  EXPECT_NEAR(distance(job).distance, 86.6025404 * 0.99990001, 1e-6);
  EXPECT_NEAR(distance(heights).heightDiff, 50.0, 1e-9);
  EXPECT_EQ(job.Findings().at(0).code, BRENU_FIELD_BOOK_READ);
  EXPECT_EQ(job.Findings().at(1).code, BRENU_SIGHT_OF_STATION);
  EXPECT_TRUE(brenu_import(Context().Get(), nullptr, book.Path(), nullptr, nullptr, log.Path()));
  std::ifstream written(log.Path());
  const std::string text(std::istreambuf_iterator<char>(written), {});
  EXPECT_NE(text.find("line 2: sight"), text.npos);
  EXPECT_NE(text.find("horizontal distance"), text.npos);
}

TEST(Import, FailuresEnterNothing) {
  const TempFile book(kBook);
  const TempFile other("no field book");
  Context job;
  try {
    job.Import({book.Path(), other.Path()});
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Id(), "field-book-unknown");
  }
  EXPECT_EQ(job.PointCount(), 0U);
  EXPECT_FALSE(brenu_import(job.Get(), nullptr, nullptr, nullptr, nullptr, nullptr));
  EXPECT_FALSE(brenu_import(job.Get(), nullptr, book.Path(), "/no/such", nullptr, nullptr));
}

}  // namespace
}  // namespace brenu::testing
