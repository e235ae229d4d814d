// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "bridge/JAccessor.h"
#include "convert/VizConverter.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FieldAt.h"
#include "tests/support/Steps.h"

// The binding is a private member of the converter, so it is reached through the pointer that the
// converter holds.
namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/vizconverter/VizConverter";

class JVizConverterTest : public ContractTest {
 protected:
  JVizConverterTest() { jvm.ClassWithConstructor(kClass); }

  // The binding of a started converter: the converter's only field.
  JAccessor& Binding() { return *FieldAt<JAccessor*>(&converter, 0); }

  VizConverter converter;
};

TEST_F(JVizConverterTest, BindsClassConstructorAndObject) {
  converter.StartConverter(jvm.Env());
  EXPECT_EQ(Binding().getClass(), jvm.ClassReference(kClass));
  EXPECT_EQ(Binding().getMethodID(), jvm.MethodID(kClass, "<init>", "()V"));
  ASSERT_NE(Binding().getObject(), nullptr);
  EXPECT_EQ(jvm.Describe(Binding().getObject()), "VizConverter@1");
}

TEST_F(JVizConverterTest, KeepsANullObject) {
  jvm.Fail("NewObject", 1);
  converter.StartConverter(jvm.Env());
  EXPECT_EQ(Binding().getObject(), nullptr);
  EXPECT_EQ(Binding().getClass(), jvm.ClassReference(kClass));
}

TEST_F(JVizConverterTest, KeepsANullClassAndLooksNoMethodUp) {
  jvm.Fail("FindClass", 1);
  converter.StartConverter(jvm.Env());
  EXPECT_EQ(Binding().getClass(), nullptr);
  EXPECT_EQ(Binding().getMethodID(), nullptr);
  EXPECT_EQ(Binding().getObject(), nullptr);
  EventLog::Get().Clear();

  std::string xml = "before";
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "before");
  const Events events = EventLog::Get().Texts(Source::kJni);
  ASSERT_GE(events.size(), 5U);
  EXPECT_EQ(events[4], "CallObjectMethod(null, null)");
}

TEST_F(JVizConverterTest, KeepsANullConstructor) {
  jvm.Fail("GetMethodID", 1);
  converter.StartConverter(jvm.Env());
  EXPECT_EQ(Binding().getMethodID(), nullptr);
  EXPECT_EQ(Binding().getObject(), nullptr);
  const Events events = EventLog::Get().Texts(Source::kJni);
  ASSERT_GE(events.size(), 4U);
  EXPECT_EQ(events[3], "NewObject(class com/tesk/vizconverter/VizConverter, null)");
}

TEST_F(JVizConverterTest, AFailedObjectFailsEveryConversion) {
  jvm.Method(kClass, "ConvertGPL", "([B)[B").Returns(jvm.MakeBytes("xml", "<x/>"));
  jvm.Fail("NewObject", 1);
  converter.StartConverter(jvm.Env());
  EXPECT_TRUE(converter.IsStarted());
  std::string xml = "before";
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(converter.GetErrorMessage(), "");
  EXPECT_EQ(xml, "before");
}

TEST_F(JVizConverterTest, LooksTheMethodUpOnEveryCall) {
  jvm.Method(kClass, "ConvertGPL", "([B)[B");
  converter.StartConverter(jvm.Env());
  EventLog::Get().Clear();
  std::string xml;
  converter.GPLtoXML("a", xml);
  converter.GPLtoXML("b", xml);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(std::count(events.begin(), events.end(),
                       "GetMethodID(class com/tesk/vizconverter/VizConverter, ConvertGPL, "
                       "([B)[B)"),
            2);
}

TEST_F(JVizConverterTest, LooksTheClassUpOncePerStart) {
  converter.StartConverter(jvm.Env());
  EventLog::Get().Clear();
  std::string xml;
  converter.GPLtoXML("a", xml);
  converter.UpgradeXML("a", xml);
  converter.GetErrorMessage();
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event, "FindClass(com/tesk/vizconverter/VizConverter)");
    EXPECT_EQ(event.find("NewObject(class com/tesk"), std::string::npos) << event;
  }
}

TEST_F(JVizConverterTest, DeletesNoLocalReference) {
  jvm.Method(kClass, "ConvertGPL", "([B)[B").Returns(jvm.MakeBytes("xml", "<x/>"));
  converter.StartConverter(jvm.Env());
  std::string xml;
  converter.GPLtoXML("a", xml);
  converter.Stop();
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Ref("), std::string::npos) << event;
  }
}

}  // namespace
}  // namespace chartbridge::testing
