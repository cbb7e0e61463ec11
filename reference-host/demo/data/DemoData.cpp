// Fills a folder with the data of a demonstration workstation: patients and
// their images, menus, explanations, reports, user settings and logs.
//
//   demo-data FOLDER [MEGABYTES]
//
// The same call always makes the same bytes. MEGABYTES (12 by default) is the
// rough size of the images, which are most of the data.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kPatients = 120;
constexpr int kImageWidth = 192;

constexpr std::array kFamilyNames{"Müller",  "Schröder", "García",    "Lindqvist", "Okafor", "Nováková",
                                  "O'Neill", "Tanaka",   "Jørgensen", "Bianchi",   "Weiß",   "Kowalska"};
constexpr std::array kGivenNames{"Anna", "José", "Karin", "Peter", "Amélie", "Søren", "Ines", "Jan", "Yuki", "Luca"};
constexpr std::array kRegions{"Thorax", "Abdomen", "Knee", "Hand", "Skull", "Spine"};

class DemoData {
 public:
  DemoData(fs::path root, std::uint64_t imageBytes) : root_(std::move(root)), imageBytes_(imageBytes) {}

  void Write() {
    WritePatients();
    WriteImages();
    WriteMenus();
    WriteTexts();
    WriteLogs();
    for (const char* folder : {"Temp", "Update", "ClientLog"}) fs::create_directories(root_ / folder);
  }

  int Files() const { return files_; }

 private:
  int Random(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }

  template <typename T, std::size_t N>
  T Pick(const std::array<T, N>& choices) {
    return choices[static_cast<std::size_t>(Random(0, static_cast<int>(N) - 1))];
  }

  static std::string Number(int number, std::size_t digits) {
    std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
  }

  void WriteFile(const fs::path& name, std::span<const char> bytes) {
    const fs::path path = root_ / name;
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
      std::cerr << "demo-data: cannot write " << path << '\n';
      std::exit(1);
    }
    ++files_;
  }

  void WritePatients() {
    for (int patient = 1; patient <= kPatients; ++patient) {
      const std::string id = "P" + Number(patient, 6);
      const std::string name = std::string(Pick(kFamilyNames)) + " " + Pick(kGivenNames);
      WriteFile(fs::path("Data/Patient") / id / "patient.ini", "[Patient]\r\nID=" + id + "\r\nName=" + name +
                                                                   "\r\nBorn=" + std::to_string(Random(1930, 2015)) +
                                                                   "\r\nRegion=" + Pick(kRegions) + "\r\n");
      WriteFile(fs::path("Data/Patient") / id / ("Order " + name + ".txt"), Sentences(Random(3, 20)));
    }
  }

  // Image-like bytes: a slope with a bright disc and noise, 16 bits a pixel, so that a
  // packer finds about what it finds in a real radiograph.
  std::vector<char> Image(int height) {
    std::vector<char> bytes;
    bytes.reserve(static_cast<std::size_t>(kImageWidth * height * 2));
    const int radius = Random(20, 70);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < kImageWidth; ++x) {
        const int dx = x - kImageWidth / 2, dy = y - height / 2;
        const int disc = dx * dx + dy * dy < radius * radius ? 900 : 0;
        const int value = 200 + x * 3 + disc + static_cast<int>(random_() & 7U);
        bytes.push_back(static_cast<char>(value & 0xFF));
        bytes.push_back(static_cast<char>(value >> 8));
      }
    }
    return bytes;
  }

  void WriteImages() {
    constexpr int kHeight = 128;
    const auto images = static_cast<int>(imageBytes_ / (kImageWidth * kHeight * 2));
    for (int image = 0; image < images; ++image) {
      const std::string patient = "P" + Number(1 + image % kPatients, 6);
      WriteFile(fs::path("Data/Image.ddo") / Number(image / 64, 3) / (patient + "_" + Number(image, 5) + ".ddo"),
                Image(kHeight));
    }
  }

  void WriteMenus() {
    for (const char* name : {"Standard.mnu", "Standard Menü.mnu", "Emergency room.mnu", "Pädiatrie.mnu"}) {
      std::string text = "[Menu]\r\n";
      for (int line = 1; line <= 40; ++line) {
        text += Number(line, 3) + "=" + Pick(kRegions) + ";" + std::to_string(Random(40, 150)) + "kV\r\n";
      }
      WriteFile(fs::path("Data/Menu") / name, text);
    }
    WriteFile("Data/Menu/Hidden settings/empty.mnu", std::string_view());
  }

  void WriteTexts() {
    for (const char* region : kRegions) {
      WriteFile(fs::path("Data/Explanation") / (std::string(region) + " Erläuterung.htm"),
                "<html><body><h1>" + std::string(region) + "</h1><p>" + Sentences(30) + "</p></body></html>\r\n");
    }
    WriteFile("Data/Explanation/撮影 手順.htm", Sentences(20));
    for (int report = 1; report <= 60; ++report) {
      WriteFile(fs::path("Data/Report") / std::to_string(2020 + report % 7) / ("Report " + Number(report, 4) + ".txt"),
                Sentences(Random(5, 60)));
    }
    for (int set = 1; set <= 8; ++set) {
      WriteFile(fs::path("Data/ReportSet") / ("Set " + Number(set, 2) + ".rps"), Sentences(12));
    }
    for (const char* user : {"brown", "keller", "müller", "service"}) {
      WriteFile(fs::path("User") / user / "settings.ini",
                "[Viewer]\r\nWindow=" + std::to_string(Random(100, 4000)) + "\r\nTool=Zoom\r\n");
    }
  }

  void WriteLogs() {
    for (const char* name : {"Acquisition", "Network", "Printer", "Database"}) {
      std::string text;
      for (int line = 0; line < 1500; ++line) {
        text += "[2026/11/" + Number(1 + line % 28, 2) + " " + Number(line / 60 % 24, 2) + ":" + Number(line % 60, 2) +
                ":00] [Information] " + name + " " + Sentence() + "\r\n";
      }
      WriteFile(fs::path("Log") / (std::string(name) + ".log"), text);
    }
    WriteFile("Log/Archive/Acquisition 2025.log", Sentences(400));
  }

  std::string Sentence() {
    static constexpr std::array kWords{"image",   "received", "stored", "queue",  "printer", "study",  "opened",
                                       "closed",  "exposure", "dose",   "normal", "finding", "series", "reviewed",
                                       "without", "change",   "since",  "last",   "record",  "sent"};
    std::string text;
    for (int word = Random(5, 12); word > 0; --word) text += std::string(Pick(kWords)) + (word > 1 ? " " : ".");
    return text;
  }

  std::string Sentences(int count) {
    std::string text;
    while (count-- > 0) text += Sentence() + "\r\n";
    return text;
  }

  fs::path root_;
  std::uint64_t imageBytes_;
  std::mt19937 random_{20261121};
  int files_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::cerr << "usage: demo-data FOLDER [MEGABYTES]\n";
    return 2;
  }
  const std::uint64_t megabytes = argc == 3 ? std::strtoull(argv[2], nullptr, 10) : 12;
  DemoData data(argv[1], megabytes * 1024 * 1024);
  data.Write();
  std::cout << data.Files() << " files\n";
}
