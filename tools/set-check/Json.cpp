// What a check has found out about a set, for other programs. docs/backup-set.md has the schema.
#include <string_view>

#include "cabinet/Names.h"
#include "set-check/Report.h"

namespace setcheck {
namespace {

/// Puts the members of one object together.
class Object {
 public:
  Object& Raw(std::string_view key, const std::string& json) {
    text_ += (text_.empty() ? "" : ",") + JsonText(std::string(key)) + ":" + json;
    return *this;
  }
  Object& Text(std::string_view key, const std::string& value) { return Raw(key, JsonText(value)); }
  Object& Number(std::string_view key, std::uint64_t value) { return Raw(key, std::to_string(value)); }
  std::string Done() const { return "{" + text_ + "}"; }

 private:
  std::string text_;
};

template <class Item, class Write>
std::string Array(const std::vector<Item>& items, Write write) {
  std::string text;
  for (const Item& item : items) text += (text.empty() ? "" : ",") + write(item);
  return "[" + text + "]";
}

const char* Word(Restorable restorable) {
  return restorable == Restorable::Wholly ? "yes" : restorable == Restorable::InPart ? "part" : "no";
}

const char* Word(Kind kind) {
  return kind == Kind::Folder ? "folder" : kind == Kind::Floppies ? "floppies" : "maintenance";
}

const char* Word(State state) {
  constexpr const char* kWords[] = {"whole",         "damaged",      "missing",    "foreign",
                                    "other-version", "not-restored", "not-offered"};
  return kWords[static_cast<std::size_t>(state)];
}

const char* Word(cabarc::Fate fate) {
  constexpr const char* kWords[] = {"whole", "doubtful", "partial", "lost"};
  return kWords[static_cast<std::size_t>(fate)];
}

std::string LostFile(const cabarc::SalvagedMember& member) {
  return Object()
      .Text("name", member.name)
      .Text("state", Word(member.fate))
      .Number("bytes", member.size)
      .Number("left", member.saved)
      .Done();
}

std::string Archive(const ArchiveReport& archive) {
  const ArchiveState& found = archive.found;
  Object object;
  object.Text("archive", archive.name)
      .Raw("category", archive.category ? JsonText(CategoryName(*archive.category)) : "null")
      .Text("version", archive.version)
      .Text("state", Word(archive.state))
      .Text("why", archive.why)
      .Number("packed", found.packed)
      .Number("files", found.files)
      .Number("bytes", found.bytes)
      .Raw("damage", Array(found.damage, JsonText))
      .Number("whole", archive.state == State::Damaged ? found.whole : found.files)
      .Raw("lost", Array(found.lost, LostFile))
      .Raw("items", Array(archive.items, [](const ItemFinding& item) {
             return Object().Text("item", item.item).Number("files", item.files).Done();
           }));
  if (!archive.members.empty()) {
    object.Raw("members", Array(archive.members, [](const cabinet::Member& member) {
                 return Object().Text("name", member.name).Number("bytes", member.size).Done();
               }));
  }
  return object.Done();
}

}  // namespace

std::string JsonText(const std::string& text) {
  std::string json = "\"";
  // What is no UTF-8 would make all of it unreadable; control characters become their pictures in the same way.
  for (const char character : cabinet::Printable(text)) {
    if (character == '"' || character == '\\') json += '\\';
    json += character;
  }
  return json + "\"";
}

std::string AsJson(const SetReport& report) {
  return Object()
      .Text("path", report.path)
      .Text("kind", Word(report.kind))
      .Text("restorable", Word(report.Verdict()))
      .Text("why", report.refusal)
      .Text("application", report.application)
      .Text("version", report.version)
      .Text("date", report.date)
      .Number("promised", report.Promised())
      .Number("whole", report.Whole())
      .Raw("archives", Array(report.archives, Archive))
      .Raw("notes", Array(report.notes, JsonText))
      .Done();
}

}  // namespace setcheck
