// Files as data references name them.
#include <gtest/gtest.h>

#include "foundation/file_locations.h"
#include "test_bytes.h"

namespace toolbox::file_locations {
namespace {

using Paths = std::vector<std::string>;

ByteView view(const std::string& text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

TEST(FileLocations, UrlsMeanFilesOfThisMachineOrNone) {
  EXPECT_EQ(paths_of_url("b%20c.mov", "/a"), Paths{"/a/b c.mov"});
  EXPECT_EQ(paths_of_url(std::string_view("d/e.mov\0rest", 12), "/a"), Paths{"/a/d/e.mov"});
  EXPECT_EQ(paths_of_url("file:///x/y%2", "/a"), Paths{"/x/y%2"});
  EXPECT_EQ(paths_of_url("file://localhost/x", ""), Paths{"/x"});
  EXPECT_EQ(paths_of_url("file:/x", ""), Paths{"/x"});
  EXPECT_EQ(paths_of_url("relative.mov", ""), Paths());
  EXPECT_EQ(paths_of_url("http://host/x", "/a"), Paths());
  EXPECT_EQ(paths_of_url("file://host", "/a"), Paths());
  EXPECT_EQ(paths_of_url("a%00b", "/a"), Paths());
  EXPECT_EQ(paths_of_url("", "/a"), Paths());
}

TEST(FileLocations, UrlsAndAliasesLeadBackToTheirFile) {
  for (const std::string path :
       {"/a/b.mov", "/a/über uns/ж%:?#.mov", "/very/deep/folder/of/things/x", "/root.mov"}) {
    SCOPED_TRACE(path);
    for (const std::string folder : {"/a", "/", "/elsewhere"}) {
      EXPECT_EQ(paths_of_url(url_to(path, folder), folder), Paths{path});
    }
    const std::string alias = alias_to(path);
    ASSERT_GE(alias.size(), 150u);
    EXPECT_EQ(alias.size(), static_cast<size_t>(static_cast<uint8_t>(alias[4]) * 256 +
                                                static_cast<uint8_t>(alias[5])));
    const Paths paths = paths_of_alias(view(alias), "/movies");
    ASSERT_GE(paths.size(), 2u);
    EXPECT_EQ(paths[0], path);
    EXPECT_EQ(paths[1], "/movies/" + path.substr(path.rfind('/') + 1));
    EXPECT_EQ(paths_of_alias(view(alias), ""), Paths{path});
    // A record that is cut anywhere says less, and never more than it holds.
    for (size_t size = 0; size < alias.size(); ++size) {
      paths_of_alias(view(alias).first(size), "/movies");
    }
  }
}

TEST(FileLocations, OldAliasesAreLookedForBesideTheMovie) {
  std::string alias(150, '\0');
  alias[7] = 2;
  alias[50] = 5;
  alias.replace(51, 5, "a.mov");
  alias += std::string("\0\2\0\x10", 4) + "Disk:Films:a.mov" + "\xFF\xFF\0\0";
  EXPECT_EQ(paths_of_alias(view(alias), "/m"),
            (Paths{"/m/Disk/Films/a.mov", "/m/Films/a.mov", "/m/a.mov", "/m/a.mov"}));
  alias[7] = 4;
  EXPECT_EQ(paths_of_alias(view(alias), "/m"), Paths());
}

TEST(FileLocations, AFolderHoldsWhatLiesBelowIt) {
  EXPECT_TRUE(is_within("/a/b/c", "/a"));
  EXPECT_TRUE(is_within("/a", "/"));
  EXPECT_FALSE(is_within("/ab/c", "/a"));
  EXPECT_FALSE(is_within("/a", "/a"));
  EXPECT_FALSE(is_within("/a", ""));
}

}  // namespace
}  // namespace toolbox::file_locations
