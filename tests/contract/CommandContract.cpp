#include "contract/CommandContract.h"

#include <algorithm>

namespace contract {
namespace {

using Names = std::vector<std::string>;

const Names kAll = {"a", "b", "c", "s\\b", "s\\d", "t\\e"};
const std::string kDeepFolder = std::string(130, 'd');
const std::string kCopy = "xcopy \"From\" \"To\\\" /S /Y";

Deed Written(const std::string& path) {
  return {Deed::Write, path};
}
Deed Marked(const std::string& path, unsigned attributes) {
  return {Deed::Mark, path, attributes};
}
Deed Held(const std::string& path) {
  return {Deed::Hold, path};
}
std::vector<Deed> Deep() {
  const std::string below = "From\\s\\" + kDeepFolder + "\\";
  return {Written(below + "1"), Written(below + std::string(130, 'n')), Written(below + "z")};
}
std::string Copy(const std::string& source, const std::string& target = "To\\") {
  return "xcopy \"" + source + "\" \"" + target + "\" /S /Y";
}
/// Joins the file "p" so many times.
std::string Join(int times) {
  std::string command = "Copy /B p";
  for (int i = 1; i < times; ++i) command += " + p";
  return command + " \"To\\joined\"";
}

const CommandScene kScenes[] = {
    {"All", {}, kCopy, 0, kAll},
    {"HiddenAndSystemFilesArePassedOver",
     {Marked("From\\a", fakes::kHidden), Marked("From\\c", fakes::kSystem)},
     kCopy,
     0,
     {"b", "s\\b", "s\\d", "t\\e"}},
    {"EmptyFoldersAreNotMade", {{Deed::Folder, "From\\u\\v"}}, kCopy, 0, kAll},
    {"StopsAtAHeldFile", {Held("From\\b")}, kCopy, 4, {"a"}},
    {"StopsAtOneInASubfolder", {Held("From\\s\\b")}, kCopy, 4, {"a", "b", "c"}},
    {"StopsAtAReadOnlyTarget", {Written("To\\b"), Marked("To\\b", fakes::kReadOnly)}, kCopy, 4, {"a", "b"}},
    {"StopsAtAHeldTarget", {Written("To\\b"), Held("To\\b")}, kCopy, 4, {"a", "b"}},
    {"CopiesAreNotReadOnly", {Marked("From\\a", fakes::kReadOnly)}, kCopy, 0, kAll},
    {"DeepFilesArePassedOverAndWhatFollowsThem",
     Deep(),
     kCopy,
     0,
     {"a", "b", "c", "s\\b", "s\\d", "s\\" + kDeepFolder + "\\1", "t\\e"}},
    {"ANameIsFoundInDeeperFoldersToo", {}, Copy("From\\b"), 0, {"b", "s\\b"}},
    {"APatternFindsNothing", {}, Copy("From\\*.x"), 1, {}},
    {"ThereIsNoSuchFolder", {}, Copy("None\\a"), 4, {}},
    {"ThereIsNoSuchFile", {}, Copy("From\\none"), 1, {}},
    {"ThereIsNoSuchDrive", {}, Copy("From", "Q:\\To\\"), 4, {}},
    {"NotIntoItself", {}, Copy(".", "To\\"), 4, {}},
    {"AnUnknownTargetWithoutABackslashIsAskedFor", {}, Copy("From", "To\\new"), 4, {}},
    {"AnUnknownVariableStaysAsItIs", {Written("From\\%NONE%")}, Copy("From\\%NONE%"), 0, {"%NONE%"}},
    {"FilesAreJoined", {Written("p")}, Join(3), 0, {"joined"}},
    {"AMissingPieceIsAFailure", {}, Join(2), 1, {}},
    // Beyond its longest command line it does nothing and says that all is well.
    {"TooManyPiecesAreNoFailure", {Written("p")}, Join(2100), 0, {}},
};

std::string NameOf(const testing::TestParamInfo<CommandScene>& scene) {
  return scene.param.name;
}

void Arrange(CommandWorld& world, const Deed& deed) {
  switch (deed.kind) {
    case Deed::Write:
      return world.Write(deed.path, "of " + deed.path);
    case Deed::Folder:
      return world.MakeFolder(deed.path);
    case Deed::Mark:
      return world.Mark(deed.path, deed.attributes);
    case Deed::Hold:
      return world.Hold(deed.path);
  }
}

TEST_P(CommandContract, LeavesWhatIsExpected) {
  const CommandScene& scene = GetParam();
  const auto world = MakeCommandWorld();
  world->MakeFolder("To");
  for (const std::string& name : kAll) world->Write("From\\" + name, "of " + name);
  for (const Deed& deed : scene.before) Arrange(*world, deed);
  EXPECT_EQ(world->Run(scene.command), scene.code);
  const auto made = world->Tree("To");
  Names names;
  for (const auto& [name, bytes] : made) names.push_back(name);
  EXPECT_EQ(names, scene.files);
  EXPECT_FALSE(world->HasFolder("To\\u"));
  if (scene.command != kCopy || scene.code != 0 || !made.contains("a")) return;
  EXPECT_EQ(made.at("a"), "of a");
  EXPECT_EQ(world->Attributes("To\\a"), 0u);
  EXPECT_EQ(world->Modified("To\\a"), world->Modified("From\\a"));
}

INSTANTIATE_TEST_SUITE_P(Commands, CommandContract, testing::ValuesIn(kScenes), NameOf);

}  // namespace
}  // namespace contract
