#include "platform/linux/language/linux_region_source.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace nimbletype {
namespace {

class LinuxRegionSourceTest : public testing::Test {
 protected:
  ~LinuxRegionSourceTest() override { clear(); }
  static void clear() {
    for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG", "TZ"}) unsetenv(name);
  }
};

TEST_F(LinuxRegionSourceTest, TakesTheLocaleOfNumbers) {
  struct Case {
    const char *all, *numeric, *lang, *locale;
  };
  for (const Case& c : {Case{"", "", "de_DE.UTF-8", "de_DE"}, Case{"", "fr_FR@euro", "de_DE.UTF-8", "fr_FR"},
                        Case{"es_MX", "fr_FR", "de_DE", "es_MX"}, Case{"C.UTF-8", "", "de_DE", "en_US"},
                        Case{"", "", "POSIX", "en_US"}, Case{"", "", "", "en_US"}}) {
    clear();
    setenv("LC_ALL", c.all, 1);
    setenv("LC_NUMERIC", c.numeric, 1);
    setenv("LANG", c.lang, 1);
    EXPECT_EQ(LinuxRegionSource().region().locale, c.locale);
  }
}

TEST_F(LinuxRegionSourceTest, FollowsTheTimeZone) {
  clear();
  const std::string systems = LinuxRegionSource().region().timeZone;
  struct Case {
    const char* set;
    std::string zone;
  };
  for (const Case& c : {Case{"Asia/Tokyo", "Asia/Tokyo"}, Case{":Europe/Berlin", "Europe/Berlin"},
                        Case{"/usr/share/zoneinfo/America/Sao_Paulo", "America/Sao_Paulo"}, Case{"", systems},
                        Case{"nowhere", systems}, Case{":/etc/localtime", systems}}) {
    setenv("TZ", c.set, 1);
    EXPECT_EQ(LinuxRegionSource().region().timeZone, c.zone) << c.set;
  }
}

}  // namespace
}  // namespace nimbletype
