// SPDX-License-Identifier: Apache-2.0
#include "app/JavaFailure.h"

#include <gtest/gtest.h>

#include <string>

namespace chartbridge {
namespace {

std::string Record(const std::string& message, const std::string& type, const std::string& stack) {
  return " time = 12:34:56.007 Message : JAccessor::exceptionCheck()\n  message: " + message +
         "\n  type: " + type + "\n  stack: " + stack + "\n";
}

const std::string kChartType = "org.chartbridge.chart.ChartException: No column \"x\".";

TEST(JavaFailureTest, NoRecordIsNoFailure) {
  EXPECT_FALSE(JavaFailure::First("").has_value());
  EXPECT_FALSE(JavaFailure::First("something else").has_value());
}

TEST(JavaFailureTest, TruncatedRecordIsNoFailure) {
  const std::string record = Record("m", "t", "s");
  EXPECT_FALSE(JavaFailure::First(record.substr(0, record.find("  stack:"))).has_value());
}

TEST(JavaFailureTest, OwnExceptionSpeaksForItself) {
  const auto failure = JavaFailure::First(Record("No column \"x\".", kChartType, "trace\n"));
  ASSERT_TRUE(failure.has_value());
  EXPECT_EQ(failure->Reason(), "No column \"x\".");
  EXPECT_EQ(failure->Stack(), "trace");
}

TEST(JavaFailureTest, OtherExceptionIsNamed) {
  const auto failure = JavaFailure::First(
      Record("Java heap space", "java.lang.OutOfMemoryError: Java heap space", "trace"));
  ASSERT_TRUE(failure.has_value());
  EXPECT_EQ(failure->Reason(), "java.lang.OutOfMemoryError: Java heap space");
}

TEST(JavaFailureTest, OwnExceptionWithoutMessageIsNamed) {
  const auto failure = JavaFailure::First(Record("", "org.chartbridge.chart.ChartException", "t"));
  ASSERT_TRUE(failure.has_value());
  EXPECT_EQ(failure->Reason(), "org.chartbridge.chart.ChartException");
}

TEST(JavaFailureTest, MessageOfSeveralLinesBecomesOne) {
  const auto failure =
      JavaFailure::First(Record("two problems:\n  the first\r\n  the second", kChartType, "trace"));
  ASSERT_TRUE(failure.has_value());
  EXPECT_EQ(failure->Reason(), "two problems: the first the second");
}

TEST(JavaFailureTest, FirstOfSeveralRecordsIsTheCause) {
  const auto failure =
      JavaFailure::First(Record("first", kChartType, "first trace\n\tat a.B.c(B.java:1)\n") +
                         Record("second", kChartType, "second trace\n"));
  ASSERT_TRUE(failure.has_value());
  EXPECT_EQ(failure->Reason(), "first");
  EXPECT_EQ(failure->Stack(), "first trace\n\tat a.B.c(B.java:1)");
}

TEST(JavaFailureTest, TellsWhatCodeWasAtWork) {
  const auto failure = JavaFailure::First(
      Record("m", kChartType,
             kChartType + "\n\tat org.chartbridge.data.NumberBuilder.add(NumberBuilder.java:1)\n" +
                 "\tat org.chartbridge.data.CsvReader.read(CsvReader.java:2)\n" +
                 "Caused by: java.lang.NumberFormatException: x\n" +
                 "\tat org.chartbridge.draw.StyleReader.read(StyleReader.java:3)\n"));
  ASSERT_TRUE(failure.has_value());
  EXPECT_TRUE(failure->PassedThrough("org.chartbridge.data.CsvReader."));
  EXPECT_FALSE(failure->PassedThrough("org.chartbridge.draw.StyleReader."));
  EXPECT_FALSE(failure->PassedThrough("CsvReader."));
}

TEST(JavaFailureTest, WithoutAStackNothingIsKnown) {
  const auto failure = JavaFailure::First(Record("m", kChartType, ""));
  ASSERT_TRUE(failure.has_value());
  EXPECT_FALSE(failure->PassedThrough("org.chartbridge"));
}

}  // namespace
}  // namespace chartbridge
