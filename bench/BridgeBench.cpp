// SPDX-License-Identifier: Apache-2.0
// What the bridge, the guard and a local frame add to one conversion whose Java method does
// nothing. Every row is a ratio against a floor that is measured in turns with it.
#include <benchmark/benchmark.h>
#include <jvmti.h>

#include <string>

#include "bench/BenchJvm.h"
#include "bench/PairedTiming.h"
#include "bench/StraightLineConversion.h"
#include "convert/VizConverter.h"
#include "guard/jniguard.h"
#include "host/LocalFrame.h"

namespace {

using chartbridge::StraightLineConversion;
using chartbridge::TimeInTurns;

JNIEnv* mainEnv = nullptr;
jvmtiEnv* jvmti = nullptr;
jniNativeInterface* bareTable = nullptr;
jniNativeInterface* guardedTable = nullptr;

std::string Document(const benchmark::State& state) {
  return std::string(static_cast<std::size_t>(state.range(0)), 'x');
}

// Few enough that the references of a batch are cheap to give back together, many enough to time.
int CallsPerBatch(const benchmark::State& state) { return state.range(0) > 100000 ? 20 : 200; }

// Gives back the references of a batch outside of the timed part.
class BatchFrame {
 public:
  BatchFrame() { mainEnv->PushLocalFrame(1024); }
  ~BatchFrame() { mainEnv->PopLocalFrame(nullptr); }
  BatchFrame(const BatchFrame&) = delete;
  BatchFrame& operator=(const BatchFrame&) = delete;

  static void Renew() {
    mainEnv->PopLocalFrame(nullptr);
    mainEnv->PushLocalFrame(1024);
  }
};

void BridgeAgainstStraightLine(benchmark::State& state) {
  const std::string document = Document(state);
  const StraightLineConversion straightLine(mainEnv, false);
  std::string output;
  const BatchFrame frame;
  TimeInTurns(
      state, [&] { VizConverter::GetInstance()->GPLtoXML(document, output); },
      [&] { straightLine.Convert(document, output); }, [](bool) { BatchFrame::Renew(); },
      CallsPerBatch(state));
}

void BridgeAgainstStraightLineThatKeepsFloatEnv(benchmark::State& state) {
  const std::string document = Document(state);
  const StraightLineConversion straightLine(mainEnv, true);
  std::string output;
  const BatchFrame frame;
  TimeInTurns(
      state, [&] { VizConverter::GetInstance()->GPLtoXML(document, output); },
      [&] { straightLine.Convert(document, output); }, [](bool) { BatchFrame::Renew(); },
      CallsPerBatch(state));
}

void GuardOnAgainstOff(benchmark::State& state) {
  const std::string document = Document(state);
  std::string output;
  const BatchFrame frame;
  const auto convert = [&] { VizConverter::GetInstance()->GPLtoXML(document, output); };
  TimeInTurns(
      state, convert, convert,
      [](bool guarded) {
        jvmti->SetJNIFunctionTable(guarded ? guardedTable : bareTable);
        BatchFrame::Renew();
      },
      CallsPerBatch(state));
  jvmti->SetJNIFunctionTable(bareTable);
}

// What the guard adds to a pair of Get and Release, which it does with copies of its own.
template <class Pair>
void PairGuardOnAgainstOff(benchmark::State& state, const Pair& pair) {
  const BatchFrame frame;
  TimeInTurns(
      state, pair, pair,
      [](bool guarded) { jvmti->SetJNIFunctionTable(guarded ? guardedTable : bareTable); },
      CallsPerBatch(state));
  jvmti->SetJNIFunctionTable(bareTable);
}

void ByteElementsGuardOnAgainstOff(benchmark::State& state) {
  const auto array = static_cast<jbyteArray>(
      mainEnv->NewGlobalRef(mainEnv->NewByteArray(static_cast<jsize>(state.range(0)))));
  PairGuardOnAgainstOff(state, [array] {
    mainEnv->ReleaseByteArrayElements(array, mainEnv->GetByteArrayElements(array, nullptr),
                                      JNI_ABORT);
  });
  mainEnv->DeleteGlobalRef(array);
}

jstring GlobalText(const benchmark::State& state) {
  return static_cast<jstring>(
      mainEnv->NewGlobalRef(mainEnv->NewStringUTF(Document(state).c_str())));
}

void StringCharsGuardOnAgainstOff(benchmark::State& state) {
  const jstring text = GlobalText(state);
  PairGuardOnAgainstOff(
      state, [text] { mainEnv->ReleaseStringChars(text, mainEnv->GetStringChars(text, nullptr)); });
  mainEnv->DeleteGlobalRef(text);
}

void StringUtfCharsGuardOnAgainstOff(benchmark::State& state) {
  const jstring text = GlobalText(state);
  PairGuardOnAgainstOff(state, [text] {
    mainEnv->ReleaseStringUTFChars(text, mainEnv->GetStringUTFChars(text, nullptr));
  });
  mainEnv->DeleteGlobalRef(text);
}

void LocalFrameOnAgainstOff(benchmark::State& state) {
  const std::string document = Document(state);
  std::string output;
  const BatchFrame frame;
  TimeInTurns(
      state,
      [&] {
        const chartbridge::LocalFrame local;
        VizConverter::GetInstance()->GPLtoXML(document, output);
      },
      [&] { VizConverter::GetInstance()->GPLtoXML(document, output); },
      [](bool) { BatchFrame::Renew(); }, CallsPerBatch(state));
}

// From a text that is nothing but overhead to a large chart.
void Sizes(benchmark::internal::Benchmark* benchmark) {
  for (const int bytes : {16, 1 << 10, 16 << 10, 1 << 20}) benchmark->Arg(bytes);
  benchmark->UseManualTime();
}

BENCHMARK(BridgeAgainstStraightLine)->Apply(Sizes);
BENCHMARK(BridgeAgainstStraightLineThatKeepsFloatEnv)->Apply(Sizes);
BENCHMARK(GuardOnAgainstOff)->Apply(Sizes);
BENCHMARK(ByteElementsGuardOnAgainstOff)->Apply(Sizes);
BENCHMARK(StringCharsGuardOnAgainstOff)->Apply(Sizes);
BENCHMARK(StringUtfCharsGuardOnAgainstOff)->Apply(Sizes);
BENCHMARK(LocalFrameOnAgainstOff)->Apply(Sizes);

// Takes the JVM's own table and the guarded one, and leaves the JVM bare.
bool TakeTables() {
  JavaVM* vm = nullptr;
  if (mainEnv->GetJavaVM(&vm) != JNI_OK) return false;
  if (vm->GetEnv(reinterpret_cast<void**>(&jvmti), JVMTI_VERSION_1_2) != JNI_OK) return false;
  if (jvmti->GetJNIFunctionTable(&bareTable) != JVMTI_ERROR_NONE) return false;
  if (jniguard_install(vm) != 0) return false;
  if (jvmti->GetJNIFunctionTable(&guardedTable) != JVMTI_ERROR_NONE) return false;
  return jvmti->SetJNIFunctionTable(bareTable) == JVMTI_ERROR_NONE;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  mainEnv = chartbridge::StartBenchJvm({CHARTBRIDGE_ECHO_JAR}, false);
  if (!TakeTables()) return 1;
  VizConverter::GetInstance()->StartConverter(mainEnv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
