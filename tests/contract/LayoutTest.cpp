// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cfenv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <new>
#include <sstream>
#include <type_traits>
#include <vector>

#include "bridge/FloatEnvGuard.h"
#include "bridge/JAccessor.h"
#include "bridge/JException.h"
#include "bridge/UnicodeConverter.h"
#include "chart/JChartImager.h"
#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FieldAt.h"
#include "tests/support/FloatEnvProbe.h"

// Hosts are compiled against these classes and hold objects of them, so sizes, field order and
// virtual slots are part of the contract. Fields are read from memory; slots are looked up in this
// program's own symbol table.
namespace chartbridge::testing {
namespace {

constexpr std::size_t kWord = sizeof(void*);

struct Symbol {
  std::uintptr_t address;
  std::size_t size;
};

// This program's symbols by their mangled names, at the addresses of its file.
std::multimap<std::string, Symbol> ReadSymbols() {
  std::multimap<std::string, Symbol> symbols;
  std::array<char, 4096> program{};
  const ssize_t length = readlink("/proc/self/exe", program.data(), program.size() - 1);
  if (length <= 0) return symbols;
  const std::string command =
      "nm --defined-only --format=posix '" + std::string(program.data()) + "'";
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), &pclose);
  std::array<char, 8192> line{};
  while (std::fgets(line.data(), static_cast<int>(line.size()), output.get()) != nullptr) {
    std::istringstream fields(line.data());
    std::string name;
    std::string kind;
    Symbol symbol{0, 0};
    fields >> name >> kind >> std::hex >> symbol.address >> symbol.size;
    symbols.emplace(name, symbol);
  }
  return symbols;
}

const std::multimap<std::string, Symbol>& Symbols() {
  static const std::multimap<std::string, Symbol> symbols = ReadSymbols();
  return symbols;
}

// The names of the functions in the object's first two virtual slots.
std::vector<std::string> NamesOfSlot(const void* object, std::size_t slot) {
  // Where the program lies in memory, told by a function whose address is known both ways.
  const auto known = Symbols().find("_ZN9ViZEditor11GetInstanceEv");
  const auto load =
      reinterpret_cast<std::uintptr_t>(&ViZEditor::GetInstance) - known->second.address;
  const auto* table = FieldAt<const std::uintptr_t*>(object, 0);
  std::vector<std::string> names;
  for (const auto& [name, symbol] : Symbols()) {
    if (symbol.address + load == table[slot]) names.push_back(name);
  }
  return names;
}

bool Contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Exactly two slots, the complete and the deleting destructor of this class (in its mangled form).
void ExpectOnlyADestructor(const void* object, const std::string& mangled,
                           const char* nested = "") {
  const auto table = Symbols().find("_ZTV" + mangled + nested);
  ASSERT_NE(table, Symbols().end()) << mangled;
  // The offset to the top, the type, and the slots.
  EXPECT_EQ(table->second.size, 4 * kWord) << mangled;
  const std::string scope = nested[0] == '\0' ? "_ZN" + mangled : "_Z" + mangled;
  const std::vector<std::string> complete = NamesOfSlot(object, 0);
  EXPECT_TRUE(Contains(complete, scope + "D1Ev") || Contains(complete, scope + "D2Ev")) << mangled;
  EXPECT_TRUE(Contains(NamesOfSlot(object, 1), scope + "D0Ev")) << mangled;
}

using LayoutTest = ContractTest;

TEST_F(LayoutTest, JAccessor) {
  const std::string name = "org/example/Chart";
  jvm.Method(name, "draw", "()V");
  JAccessor accessor(jvm.Env());
  accessor.setClass(name.c_str());
  accessor.setMethod("draw", "()V");
  accessor.setObject(jvm.MakeObject(name));
  EXPECT_EQ(sizeof accessor, 5 * kWord);
  EXPECT_EQ(FieldAt<JNIEnv*>(&accessor, 1 * kWord), jvm.Env());
  EXPECT_EQ(FieldAt<jclass>(&accessor, 2 * kWord), accessor.getClass());
  EXPECT_EQ(FieldAt<jmethodID>(&accessor, 3 * kWord), accessor.getMethodID());
  EXPECT_EQ(FieldAt<jobject>(&accessor, 4 * kWord), accessor.getObject());
  EXPECT_NE(accessor.getClass(), nullptr);
  ExpectOnlyADestructor(&accessor, "9JAccessor");
}

TEST_F(LayoutTest, ANewJAccessorHoldsOnlyItsEnv) {
  const JAccessor accessor(jvm.Env());
  EXPECT_EQ(FieldAt<JNIEnv*>(&accessor, 1 * kWord), jvm.Env());
  for (std::size_t field = 2; field < 5; ++field) {
    EXPECT_EQ(FieldAt<void*>(&accessor, field * kWord), nullptr);
  }
}

TEST_F(LayoutTest, SetEnvStoresNullAsItIs) {
  JAccessor accessor(jvm.Env());
  accessor.setEnv(nullptr);
  EXPECT_EQ(FieldAt<JNIEnv*>(&accessor, kWord), nullptr);
}

TEST_F(LayoutTest, ViZEditor) {
  jvm.ClassWithConstructor("com/tesk/charteditor/ChartImager");
  ViZEditor editor;
  EXPECT_EQ(sizeof editor, 2 * kWord + sizeof(std::string));
  EXPECT_EQ(FieldAt<JChartImager*>(&editor, kWord), nullptr);
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 2 * kWord), "");
  editor.StartEditorHeadless(jvm.Env());
  editor.SetCodepage("UTF-8");
  const auto* imager = FieldAt<JChartImager*>(&editor, kWord);
  ASSERT_NE(imager, nullptr);
  EXPECT_EQ(jvm.Describe(imager->getObject()), "ChartImager@1");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 2 * kWord), "UTF-8");
  editor.StopHeadless();
  EXPECT_EQ(FieldAt<JChartImager*>(&editor, kWord), nullptr);
  ExpectOnlyADestructor(&editor, "9ViZEditor");
}

TEST_F(LayoutTest, ViZEditorSetEnvReachesItsBinding) {
  jvm.ClassWithConstructor("com/tesk/charteditor/ChartImager");
  ViZEditor editor;
  editor.StartEditorHeadless(jvm.Env());
  const auto* imager = FieldAt<JChartImager*>(&editor, kWord);
  JNIEnv* worker = jvm.NewEnv("worker");
  editor.SetEnv(worker);
  EXPECT_EQ(FieldAt<JNIEnv*>(imager, kWord), worker);
  editor.StartEditorHeadless(jvm.Env());
  EXPECT_EQ(FieldAt<JChartImager*>(&editor, kWord), imager);
  EXPECT_EQ(FieldAt<JNIEnv*>(imager, kWord), worker);
}

TEST_F(LayoutTest, JChartImagerAddsNoField) {
  jvm.ClassWithConstructor("com/tesk/charteditor/ChartImager");
  const JChartImager imager(jvm.Env());
  EXPECT_EQ(sizeof imager, sizeof(JAccessor));
  ExpectOnlyADestructor(&imager, "12JChartImager");
}

TEST_F(LayoutTest, VizConverterHoldsItsBindingAndNothingElse) {
  jvm.ClassWithConstructor("com/tesk/vizconverter/VizConverter");
  VizConverter converter;
  EXPECT_EQ(sizeof converter, kWord);
  EXPECT_FALSE(std::is_polymorphic_v<VizConverter>);
  EXPECT_EQ(FieldAt<JAccessor*>(&converter, 0), nullptr);
  converter.StartConverter(jvm.Env());
  const auto* binding = FieldAt<JAccessor*>(&converter, 0);
  ASSERT_NE(binding, nullptr);
  EXPECT_EQ(jvm.Describe(binding->getObject()), "VizConverter@1");
  ExpectOnlyADestructor(binding, "N12VizConverter13JVizConverter", "E");
  converter.Stop();
  EXPECT_EQ(FieldAt<JAccessor*>(&converter, 0), nullptr);
}

TEST_F(LayoutTest, BindingsForgetTheirEnvBeforeTheirBase) {
  jvm.ClassWithConstructor("com/tesk/charteditor/ChartImager");
  // Destroyed in place, so that the memory can still be looked at.
  alignas(JChartImager) std::array<unsigned char, sizeof(JChartImager)> memory{};
  auto* imager = new (memory.data()) JChartImager(jvm.Env());
  EXPECT_EQ(FieldAt<JNIEnv*>(memory.data(), kWord), jvm.Env());
  imager->~JChartImager();
  const volatile unsigned char* bytes = memory.data();
  for (std::size_t i = kWord; i < 2 * kWord; ++i) EXPECT_EQ(bytes[i], 0) << i;
}

TEST_F(LayoutTest, TheConvertersBindingForgetsItsEnvToo) {
  jvm.ClassWithConstructor("com/tesk/vizconverter/VizConverter");
  VizConverter converter;
  converter.StartConverter(jvm.Env());
  auto* binding = FieldAt<JAccessor*>(&converter, 0);
  EXPECT_EQ(FieldAt<JNIEnv*>(binding, kWord), jvm.Env());
  // The complete destructor, which leaves the memory there to be looked at.
  using Destructor = void (*)(void*);
  FieldAt<const Destructor*>(binding, 0)[0](binding);
  EXPECT_EQ(FieldAt<JNIEnv*>(binding, kWord), nullptr);
  ::operator delete(binding);
  // The converter must not delete it again.
  JAccessor* const none = nullptr;
  std::memcpy(static_cast<void*>(&converter), &none, sizeof none);
}

TEST_F(LayoutTest, UnicodeConverter) {
  const UnicodeConverter converter("chart");
  EXPECT_EQ(sizeof converter, 2 * kWord);
  EXPECT_FALSE(std::is_polymorphic_v<UnicodeConverter>);
  EXPECT_FALSE(std::is_copy_constructible_v<UnicodeConverter>);
  EXPECT_EQ(FieldAt<const unsigned short*>(&converter, 0), converter.toString());
  EXPECT_EQ(FieldAt<long>(&converter, kWord), 5);
}

TEST_F(LayoutTest, JException) {
  const JException exception("first", "second", "third");
  EXPECT_EQ(sizeof exception, 3 * sizeof(std::string));
  EXPECT_EQ(FieldReferenceAt<std::string>(&exception, 0), "first");
  EXPECT_EQ(FieldReferenceAt<std::string>(&exception, sizeof(std::string)), "second");
  EXPECT_EQ(FieldReferenceAt<std::string>(&exception, 2 * sizeof(std::string)), "third");
}

TEST_F(LayoutTest, FloatEnvGuard) {
  EXPECT_FALSE(std::is_polymorphic_v<FloatEnvGuard>);
  EXPECT_FALSE(std::is_copy_constructible_v<FloatEnvGuard>);
  EXPECT_EQ(sizeof(FloatEnvGuard), sizeof(std::fenv_t) + alignof(std::fenv_t));
  FloatEnvProbe::Get().FailSave(2);
  const FloatEnvGuard saved;
  const FloatEnvGuard unsaved;
  EXPECT_EQ(FieldAt<unsigned char>(&saved, sizeof(std::fenv_t)), 1);
  EXPECT_EQ(FieldAt<unsigned char>(&unsaved, sizeof(std::fenv_t)), 0);
}

}  // namespace
}  // namespace chartbridge::testing
