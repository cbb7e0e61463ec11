// Values of INI files: which line gives one, and which does not.
#include "backupset/Descriptor.h"
#include "unit/Station.h"

namespace {

TEST_F(JobTest, IniValues) {
  host.WriteLines("C:\\x.ini", {"[One]", "Blank =1", "  Indented=2", "Key=  a = b  ", "key=lower", "Tab=\tx", "[Two]",
                                "Key=second", ";Comment=no", "Disk12=piece", "Ümlaut=grün", "Empty="});
  const std::pair<const char*, const char*> rows[] = {
      {"Key", "a = b"}, {" Key ", "a = b"}, {"Blank", ""},      {"Indented", ""},    {"key", "lower"},
      {"Tab", "\tx"},   {"KEY", ""},        {"Comment", ""},    {"Disk##", "piece"}, {"D*", "piece"},
      {"Disk", ""},     {"[K]ey", "a = b"}, {"Ümlaut", "grün"}, {"Empty", ""},       {"[", ""},
  };
  for (const auto& [key, value] : rows) EXPECT_EQ(backupset::ReadIniValue(tools, " C: ", "x.ini", key), value) << key;
  EXPECT_EQ(backupset::ReadIniValue(tools, "C:\\", "missing.ini", "Key"), "");
  host.messageLoop.yields = 0;
  backupset::ReadIniValue(tools, "C:\\", "x.ini", "Key");
  EXPECT_EQ(host.messageLoop.yields, 4) << "events are served after each line, up to the one that fits";
}

}  // namespace
