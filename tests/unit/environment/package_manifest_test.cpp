#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fl/filesystem/displayed_text.hpp>
#include <search_path_environment/package_manifest.hpp>
#include <string>
#include <support/folder_list.hpp>
#include <vector>

namespace Quorvex::PathEnvironment {
namespace {

using foundation::storage::vfs::AbsoluteIRI;
using PackageRegistry::PackageProperty;
using PathManagement::support::FolderList;
using PathManagement::support::NamesOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

PackageManifest Parse(const std::string& text, const std::u16string& folder = u"memory:///packages") {
  return PackageManifest::Parse(text, AbsoluteIRI(folder));
}

/// "line 3, column 5: reason"; "accepted" for a manifest.
std::string RefusalOf(const std::string& text) {
  try {
    Parse(text);
    return "accepted";
  } catch (const ManifestError& error) {
    const std::string column = error.GetColumn() == 0 ? "" : ", column " + std::to_string(error.GetColumn());
    return "line " + std::to_string(error.GetLine()) + column + ": " + error.what();
  }
}

std::string PathFoldersOf(const PackageManifest& manifest) {
  FolderList folders;
  for (const auto& record : manifest.pathFolders) folders.push_back(record.folder);
  return NamesOf(folders);
}

/// A good manifest, with `fields` in addition, one a line.
std::string With(const std::string& fields) {
  return "{\"component\": \"signal\",\n\"enabled\": true,\n\"root\": \"lib\",\n" + fields + "\n}";
}

const std::string kGood = With("\"pathFolders\": []");

TEST(PackageManifest, TellsAPackageWithPathFolders) {
  const PackageManifest manifest = Parse(R"({
    "component": "signal",
    "enabled": true,
    "root": "signal",
    "pathFolders": ["core", "filters/fir"]
  })");

  EXPECT_EQ(manifest.component.GetText(), u"signal");
  EXPECT_EQ(manifest.componentLine, 2U);
  EXPECT_TRUE(manifest.isEnabled);
  EXPECT_FALSE(manifest.isRootFolderPackage);
  EXPECT_EQ(manifest.rootFolder, AbsoluteIRI(u"memory:///packages/signal"));
  EXPECT_EQ(PathFoldersOf(manifest), "packages/signal/core packages/signal/filters/fir");
  EXPECT_THAT(manifest.properties, IsEmpty());
}

TEST(PackageManifest, TellsARootFolderPackage) {
  const PackageManifest manifest = Parse(R"({"properties": {"ManualInstall": true}, "rootFolderPackage": true,
    "root": "/opt/tools", "enabled": false, "component": "tools"})");

  EXPECT_FALSE(manifest.isEnabled);
  EXPECT_TRUE(manifest.isRootFolderPackage);
  EXPECT_EQ(manifest.rootFolder, AbsoluteIRI(u"file:///opt/tools"));
  EXPECT_THAT(manifest.pathFolders, IsEmpty());
  EXPECT_THAT(manifest.properties, ElementsAre(Pair(u"ManualInstall", PackageProperty(true))));
}

TEST(PackageManifest, HasPropertiesOfEverySimpleKind) {
  const PackageManifest manifest = Parse(With(R"("pathFolders": [], "properties": {"a": false, "b": -7, "c": 0.5,
    "d": "t\u00e9xt", "e": 9223372036854775807, "f": 1e2, "g": 9223372036854775808, "": ""})"));

  EXPECT_THAT(manifest.properties,
              ElementsAre(Pair(u"", PackageProperty(std::u16string())), Pair(u"a", PackageProperty(false)),
                          Pair(u"b", PackageProperty(std::int64_t{-7})), Pair(u"c", PackageProperty(0.5)),
                          Pair(u"d", PackageProperty(std::u16string(u"t\u00e9xt"))),
                          Pair(u"e", PackageProperty(std::int64_t{9223372036854775807})),
                          Pair(u"f", PackageProperty(100.0)), Pair(u"g", PackageProperty(9223372036854775808.0))));
}

TEST(PackageManifest, TakesItsRootAgainstItsOwnFolder) {
  const auto rootOf = [](const std::string& root, const std::u16string& folder) {
    return Parse("{\"component\":\"c\",\"enabled\":true,\"pathFolders\":[],\"root\":\"" + root + "\"}", folder)
        .rootFolder.toString();
  };
  EXPECT_EQ(rootOf("lib", u"file:///p"), u"file:///p/lib");
  EXPECT_EQ(rootOf(".", u"file:///p"), u"file:///p");
  EXPECT_EQ(rootOf("../lib", u"file:///p/q"), u"file:///p/lib");
  EXPECT_EQ(rootOf("lib", u"file:///p%2Fq/%FF"), u"file:///p%2Fq/%FF/lib");
  EXPECT_EQ(rootOf("50% a", u"file:///"), u"file:///50%25 a");
  EXPECT_EQ(rootOf("/opt/lib", u"memory:///p"), u"file:///opt/lib");
  EXPECT_EQ(rootOf("memory:///lib", u"file:///p"), u"memory:///lib");
}

TEST(PackageManifest, NamesPathFoldersFromItsRootDown) {
  const PackageManifest manifest =
      Parse(With(R"("pathFolders": ["b", "a", "b", ".", "x//y/", "a/./b", "..a", "50%"])"));
  EXPECT_EQ(PathFoldersOf(manifest),
            "packages/lib/b packages/lib/a packages/lib/b packages/lib packages/lib/x/y packages/lib/a/b "
            "packages/lib/..a packages/lib/50%25");
}

TEST(PackageManifest, RefusesAPathFolderThatLeadsElsewhere) {
  for (const std::string folder : {"..", "../x", "a/../b", "a/..", "./..", "/opt", "/", "//opt", "memory:///x"}) {
    EXPECT_EQ(RefusalOf(With("\"pathFolders\": [\"a\",\n\"" + folder + "\"]")),
              "line 5: the path folder \"" + folder + "\" is not named from the root down");
  }
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [\"\"]")), "line 4: a path folder is empty");
  EXPECT_THAT(RefusalOf(With("\"pathFolders\": [\"a\\u0000b\"]")), HasSubstr("line 4: "));
}

TEST(PackageManifest, TakesRootFolderPackageThatIsFalseForNone) {
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [], \"rootFolderPackage\": false")), "accepted");
  EXPECT_EQ(RefusalOf(With("\"rootFolderPackage\": false")),
            "line 1: there is neither \"pathFolders\" nor a \"rootFolderPackage\" that is true");
}

TEST(PackageManifest, RefusesBothKindsOfPackageAndNeither) {
  EXPECT_EQ(RefusalOf(With("\"rootFolderPackage\": true,\n\"pathFolders\": []")),
            "line 5: a root-folder package has no \"pathFolders\"");
  EXPECT_EQ(RefusalOf(With("\"properties\": {}")),
            "line 1: there is neither \"pathFolders\" nor a \"rootFolderPackage\" that is true");
}

TEST(PackageManifest, RefusesAFieldThatIsMissing) {
  EXPECT_EQ(RefusalOf("\n{}"), "line 2: the field \"component\" is missing");
  EXPECT_EQ(RefusalOf(R"({"component":"c","root":"r","pathFolders":[]})"), "line 1: the field \"enabled\" is missing");
  EXPECT_EQ(RefusalOf(R"({"component":"c","enabled":true,"pathFolders":[]})"), "line 1: the field \"root\" is missing");
}

TEST(PackageManifest, RefusesAnUnknownFieldAtItsLine) {
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [],\n\"Enabled\":\ntrue")), "line 5: there is no field \"Enabled\"");
  EXPECT_EQ(RefusalOf(With("\"\": 1")), "line 4: there is no field \"\"");
}

TEST(PackageManifest, RefusesANameThatStandsTwiceInAnObject) {
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [],\n\"enabled\": true")),
            "line 5: \"enabled\" stands twice in one object");
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [],\n\"\\u0065nabled\": true")),
            "line 5: \"enabled\" stands twice in one object");
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [],\n\"properties\": {\"a\": 1,\n\"a\": 2}")),
            "line 6: \"a\" stands twice in one object");
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [], \"properties\": {\"root\": 1}")), "accepted") << "another object";
}

TEST(PackageManifest, RefusesAFieldOfTheWrongType) {
  const auto refusalWith = [](const std::string& field, const std::string& value) {
    std::string text = kGood;
    const std::size_t begin = text.find("\"" + field + "\": ") + field.size() + 4;
    return RefusalOf(text.replace(begin, text.find_first_of(",\n", begin) - begin, value));
  };
  EXPECT_EQ(refusalWith("component", "1"), "line 1: \"component\" is a number, not a string");
  EXPECT_EQ(refusalWith("component", "\"\""), "line 1: \"component\" is empty");
  EXPECT_EQ(refusalWith("enabled", "\"true\""), "line 2: \"enabled\" is a string, not a boolean");
  EXPECT_EQ(refusalWith("enabled", "null"), "line 2: \"enabled\" is null, not a boolean");
  EXPECT_EQ(refusalWith("root", "[]"), "line 3: \"root\" is an array, not a string");
  EXPECT_EQ(refusalWith("root", "\"\""), "line 3: \"root\" is empty");
  EXPECT_EQ(refusalWith("pathFolders", "{}"), "line 4: \"pathFolders\" is an object, not an array");
  EXPECT_EQ(refusalWith("pathFolders", "\n[true]"), "line 5: a path folder is a boolean, not a string");
  EXPECT_EQ(RefusalOf(With("\"rootFolderPackage\": 1.5")), "line 4: \"rootFolderPackage\" is a number, not a boolean");
  EXPECT_EQ(RefusalOf(With("\"pathFolders\": [], \"properties\": []")),
            "line 4: \"properties\" is an array, not an object");
}

TEST(PackageManifest, RefusesAPropertyThatIsNotSimple) {
  const auto refusalOfProperty = [](const std::string& value) {
    return RefusalOf(With("\"pathFolders\": [], \"properties\": {\n\"p\": " + value + "}"));
  };
  EXPECT_EQ(refusalOfProperty("null"), "line 5: the property \"p\" is null, not a boolean, a number or a string");
  EXPECT_EQ(refusalOfProperty("[]"), "line 5: the property \"p\" is an array, not a boolean, a number or a string");
  EXPECT_EQ(refusalOfProperty("{}"), "line 5: the property \"p\" is an object, not a boolean, a number or a string");
  EXPECT_EQ(refusalOfProperty("1e400"), "line 5: the property \"p\" is too large a number");
}

TEST(PackageManifest, RefusesAMalformedRootAndQuotesIt) {
  EXPECT_THAT(RefusalOf(R"({"component":"c","enabled":true,"pathFolders":[],"root":"file://ho st/x"})"),
              HasSubstr("line 1: malformed identifier \"file://ho st/x\""));
}

TEST(PackageManifest, IsAnObject) {
  EXPECT_EQ(RefusalOf("[]"), "line 1: the manifest is an array, not an object");
  EXPECT_EQ(RefusalOf("\n12"), "line 2: the manifest is a number, not an object");
  EXPECT_EQ(RefusalOf("null"), "line 1: the manifest is null, not an object");
}

TEST(PackageManifest, TellsWhereATextCeasesToBeJson) {
  EXPECT_EQ(RefusalOf("{\n  \"component\" \"c\"\n}"), "line 2, column 15: it is not JSON: syntax error");
  EXPECT_EQ(RefusalOf("{\n  \"\xC3\xA9\": tru\n}"), "line 2, column 8: it is not JSON: syntax error");
  EXPECT_EQ(RefusalOf(kGood + "\n x"), "line 6, column 2: it is not JSON: extra data");
  EXPECT_EQ(RefusalOf("{\"a\": 1,}"), "line 1, column 9: it is not JSON: syntax error");
  EXPECT_EQ(RefusalOf("// a\n{}"), "line 1, column 1: it is not JSON: syntax error");
  EXPECT_EQ(RefusalOf("\xEF\xBB\xBF{}"), "line 1, column 1: it is not JSON: syntax error");
}

TEST(PackageManifest, TellsTheLineInWhichATextIsCutOff) {
  EXPECT_EQ(RefusalOf(""), "line 1: it is not JSON: incomplete JSON");
  EXPECT_EQ(RefusalOf("{\n\"component\": \"c\""), "line 2: it is not JSON: incomplete JSON");
  EXPECT_EQ(RefusalOf("{\n\"component\": \"c\n"), "line 2, column 16: it is not JSON: syntax error");
  EXPECT_EQ(RefusalOf("{\n\"component\": \"c"), "line 2: it is not JSON: incomplete JSON");
}

TEST(PackageManifest, RefusesWhatIsNoUnicode) {
  EXPECT_THAT(RefusalOf(With("\"pathFolders\": [\"\xFF\"]")), HasSubstr("line 4, column 18: it is not JSON"));
  EXPECT_THAT(RefusalOf(With("\"pathFolders\": [\"\xED\xA0\x80\"]")), HasSubstr("it is not JSON"));
  EXPECT_THAT(RefusalOf(With("\"pathFolders\": [\"\\ud800\"]")), HasSubstr("it is not JSON"));
  EXPECT_THAT(RefusalOf(With("\"pathFolders\": [\"\xC3\"]")), HasSubstr("it is not JSON"));
  EXPECT_EQ(PathFoldersOf(Parse(With("\"pathFolders\": [\"\\ud83d\\ude00\"]"))), "packages/lib/\xF0\x9F\x98\x80");
}

TEST(PackageManifest, RefusesWhatIsNestedTooDeep) {
  EXPECT_THAT(RefusalOf(std::string(33, '[')), HasSubstr("it is not JSON: too deep"));
  EXPECT_THAT(RefusalOf(std::string(500'000, '[')), HasSubstr("it is not JSON: too deep"));
  EXPECT_THAT(RefusalOf(std::string(32, '[') + std::string(32, ']')), HasSubstr("the manifest is an array"));
}

TEST(PackageManifest, TakesEveryKindOfLineEndAndCountsLineFeeds) {
  std::string text = With("\"pathFolders\": [],\n\"x\": 1");
  EXPECT_EQ(RefusalOf(text), "line 5: there is no field \"x\"");
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) text.replace(at, 1, "\r\n");
  EXPECT_EQ(RefusalOf(text), "line 5: there is no field \"x\"");
}

TEST(PackageManifest, ShowsWhatItRefusesSafelyAndNotAtLength) {
  EXPECT_EQ(RefusalOf(With("\"\\u001b[2J\": 1")), "line 4: there is no field \"\\u{1B}[2J\"");
  EXPECT_LT(RefusalOf(With("\"" + std::string(500'000, 'x') + "\": 1")).size(), 400U);
}

TEST(PackageManifest, CostsLittleHoweverManyMembersThereAre) {
  std::string properties;
  for (int number = 0; number < 60'000; ++number) properties += "\"" + std::to_string(number) + "\":1,";
  properties.pop_back();
  EXPECT_EQ(Parse(With("\"pathFolders\": [], \"properties\": {" + properties + "}")).properties.size(), 60'000U);
}

}  // namespace
}  // namespace Quorvex::PathEnvironment
