// SPDX-License-Identifier: Apache-2.0
// Has stand-ins for the Java classes answer with fewer bytes than the library reads, on a heap full
// of old bytes, in a process of its own: result_probe <case> [bare]. It prints what it sees as
// lines "name=value".
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "host/JvmSettings.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tree/TreeEditor.h"

namespace {

constexpr int kTimes = 50;
constexpr std::size_t kSmall = 24;

JNIEnv* Env() { return TeskJVM::GetInstance()->GetEnv(); }

template <typename Value>
void Show(const char* name, const Value& value) {
  // At once, so that it is out even when the process dies next.
  std::cout << name << "=" << value << std::endl;
}

// Leaves old bytes in memory of every small size.
void DirtyHeap() {
  std::vector<std::unique_ptr<char[]>> blocks;
  for (std::size_t bytes = 1; bytes <= 256; ++bytes) {
    for (int i = 0; i < 20; ++i) {
      blocks.push_back(std::make_unique<char[]>(bytes));
      std::fill_n(blocks.back().get(), bytes, '\x7f');
    }
  }
}

// Whether memory of a small size comes with old bytes. The analyzer is right that nobody should
// look.
bool HeapIsDirty() {
  void* memory = std::malloc(kSmall);
  const auto* bytes = static_cast<const volatile char*>(memory);
  bool dirty = true;
  // The C library keeps its own notes in the first two words.
  for (std::size_t i = 16; i < kSmall; ++i) dirty = dirty && bytes[i] != 0;
  std::free(memory);
  return dirty;
}

struct Outputs {
  bool answer = true;
  std::string first = "old";
  std::string second = "old";
  std::string third = "old";
};

Outputs Map(ViZEditor::IMAGE_TYPE type, const std::string& chart) {
  const unsigned char data[1] = {'d'};
  Outputs outputs;
  DirtyHeap();
  outputs.answer = ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      chart, data, sizeof data, type, 100, outputs.first, outputs.second, outputs.third, "", "", "",
      "", false);
  return outputs;
}

// The same many times, since other memory is used each time. Shows the first result, and whether
// all others are like it.
void ShowMap(ViZEditor::IMAGE_TYPE type, const std::string& chart) {
  const Outputs shown = Map(type, chart);
  Show("answer", shown.answer);
  Show("first", shown.first);
  Show("second", shown.second);
  Show("third", shown.third);
  bool same = true;
  for (int i = 0; i < kTimes; ++i) {
    const chartbridge::LocalFrame frame;
    const Outputs other = Map(type, chart);
    same = same && other.answer == shown.answer && other.first == shown.first &&
           other.second == shown.second && other.third == shown.third;
  }
  Show("same", same);
}

void MapOfNothing() { ShowMap(ViZEditor::IMAGE_MAP, "nothing"); }
void MapOfOneBlock() { ShowMap(ViZEditor::IMAGE_MAP, "blocks one"); }
void MapOfTwoBlocks() { ShowMap(ViZEditor::IMAGE_MAP, "blocks one two"); }
void MapOfThreeBlocks() { ShowMap(ViZEditor::IMAGE_MAP, "blocks one two three"); }
void PictureOfNothing() { ShowMap(ViZEditor::IMAGE_PNG, "nothing"); }

// Every other result that is an array, empty.
void ChartsOfNothing() {
  ViZEditor& editor = *ViZEditor::GetInstance();
  unsigned int unused = 0;
  std::string picture = "old";
  Show("answer", editor.RenderImageToMemoryHeadless("nothing", "", unused, ViZEditor::IMAGE_PNG,
                                                    100, "", "", "", "", picture));
  Show("picture", picture);
  std::string document = "nothing";
  Show("styled", editor.ApplyStyleSheet(document, "sheet"));
  Show("document", document);
  unsigned char histogram[1] = {'h'};
  Show("graph", editor.EmbedHistogramInGraph("nothing", "", histogram, sizeof histogram, 1));
}

void ConversionsOfNothing() {
  VizConverter& converter = *VizConverter::GetInstance();
  converter.StartConverter(Env());
  std::string xml = "old";
  Show("answer", converter.GPLtoXML("nothing", xml));
  Show("xml", xml);
  xml = "old";
  Show("upgraded", converter.UpgradeXML("", xml));
  Show("newXml", xml);
}

void TreesOfNothing() {
  TreeEditor& editor = *TreeEditor::GetInstance();
  editor.StartEditor(Env(), "", "");
  editor.StartEditorHeadless(Env());
  editor.RenderPMMLAtLocation(0, 0, 1, 1, "nothing", "");
  Show("display", editor.ExtractDisplayData());
  Show("model", editor.ExtractCompressedPMML());
  long width = 7;
  long height = 7;
  Show("size", editor.GetSize(width, height));
  Show("measured", editor.CalculateSizeHeadless("nothing", "", width, height));
  Show("width", width);
  unsigned int size = 7;
  std::string image = "old";
  Show("answer", editor.RenderImageToMemoryHeadless("empty", "", "", size, TreeEditor::IMAGE_PNG,
                                                    false, image));
  Show("bytes", size);
  Show("image", image);
}

const std::map<std::string, void (*)()> kCases = {
    {"MapOfNothing", MapOfNothing},         {"MapOfOneBlock", MapOfOneBlock},
    {"MapOfTwoBlocks", MapOfTwoBlocks},     {"MapOfThreeBlocks", MapOfThreeBlocks},
    {"PictureOfNothing", PictureOfNothing}, {"ChartsOfNothing", ChartsOfNothing},
    {"TreesOfNothing", TreesOfNothing},     {"ConversionsOfNothing", ConversionsOfNothing},
};

}  // namespace

int main(int count, char** arguments) {
  if (count < 2 || kCases.count(arguments[1]) == 0) return 2;
  chartbridge::JvmSettings settings;
  settings.guard = count == 2;
  settings.options = {"-Xmx64m", "-XX:ErrorFile=hs_err.log", "-XX:-CreateCoredumpOnCrash"};
  settings.classPath = {CHARTBRIDGE_TEST_JAR};
  chartbridge::SetJvmSettings(settings);
  if (!TeskJVM::GetInstance()->StartJVM()) return 3;
  ViZEditor::GetInstance()->StartEditorHeadless(Env());
  DirtyHeap();
  Show("dirty", HeapIsDirty());
  kCases.at(arguments[1])();
  Show("done", 1);
  return 0;
}
