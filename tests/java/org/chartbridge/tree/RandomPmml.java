// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree;

import java.util.List;
import java.util.Random;

/**
 * Random PMML documents of all kinds that the standard allows: every version, every way to join
 * models, trees with and without scores, counts and probabilities, every predicate, models within
 * nodes, transformations, targets, outputs, extensions.
 */
public final class RandomPmml {
  private static final String[] NAMES = {"x", "y", "a rather long name of a field",
      "a_long_name_with_underscores_and_no_space_at_all", "Gr\u00F6\u00DFe", "\u540D\u524D"};
  private static final String[] METHODS = {"majorityVote", "weightedMajorityVote", "average",
      "weightedAverage", "median", "weightedMedian", "max", "sum", "weightedSum", "selectFirst",
      "selectAll", "modelChain", "x-own"};
  private static final String[] MISSING = {"none", "lastPrediction", "nullPrediction",
      "defaultChild", "weightedConfidence", "aggregateNodes"};
  private static final String[] OPERATORS = {"equal", "notEqual", "lessThan", "lessOrEqual",
      "greaterThan", "greaterOrEqual", "isMissing", "isNotMissing"};
  private static final String[] TYPES = {"string", "integer", "float", "double", "boolean", "date",
      "time", "dateTime", "dateDaysSince[1970]", "dateTimeSecondsSince[1970]"};
  private static final String[] OTHER_MODELS = {"NeuralNetwork", "RegressionModel", "Scorecard",
      "RuleSetModel", "SupportVectorMachineModel"};

  private final Random random;
  private final StringBuilder text = new StringBuilder();
  private final boolean classification;
  private final String[] classes;
  /** Whether nodes of the present tree have scores, counts and so on, as tools differ in. */
  private boolean scores;
  private boolean innerScores;
  private boolean counts;
  private boolean distributions;
  private boolean innerDistributions;
  private int budget;

  private RandomPmml(long seed) {
    // Neighbouring seeds give nearly the same first numbers; multiplied, they do not.
    random = new Random(seed * 0x9E3779B97F4A7C15L);
    classification = random.nextBoolean();
    classes = random.nextInt(3) == 0 ? new String[] {"0", "1.0", "1"}
        : new String[] {"A", "a class with a long name", "C_1", "D"};
  }

  /** The document of a seed; the same for the same seed. */
  public static String document(long seed) {
    RandomPmml pmml = new RandomPmml(seed);
    pmml.write();
    return pmml.text.toString();
  }

  private boolean often() {
    return random.nextInt(4) > 0;
  }

  private boolean rarely() {
    return random.nextInt(6) == 0;
  }

  private String pick(String... values) {
    return values[random.nextInt(values.length)];
  }

  private void write() {
    int minor = random.nextInt(5);
    boolean prefixed = rarely();
    text.append("<PMML xmlns=\"http://www.dmg.org/PMML-4_").append(minor)
        .append("\" version=\"4.").append(minor).append("\">");
    extension();
    text.append("<Header><Application name=\"random\"/></Header>");
    dictionary();
    transformations("TransformationDictionary", "d");
    budget = 1 + random.nextInt(40);
    model(0);
    if (rarely()) {
      model(1);
    }
    extension();
    text.append("</PMML>");
    if (prefixed) {
      String all = text.toString().replaceAll("<(/?)([A-Z])", "<$1p:$2")
          .replace("xmlns=\"http", "xmlns:p=\"http");
      text.setLength(0);
      text.append(all);
    }
  }

  private void extension() {
    if (rarely()) {
      text.append("<Extension name=\"e\" value=\">\"><Node/><o:Node xmlns:o=\"urn:other\"/>")
          .append("</Extension>");
    }
  }

  private void dictionary() {
    text.append("<DataDictionary>");
    extension();
    for (String name : NAMES) {
      boolean continuous = random.nextBoolean();
      text.append("<DataField name=\"").append(name).append("\" optype=\"")
          .append(continuous ? "continuous" : "categorical").append("\" dataType=\"")
          .append(continuous ? pick("double", "float", "integer") : pick(TYPES)).append("\">");
      extension();
      if (continuous && rarely()) {
        text.append("<Interval closure=\"closedOpen\" leftMargin=\"-5\" rightMargin=\"5\"/>");
      }
      if (!continuous && random.nextBoolean()) {
        for (String value : List.of("1", "0.5", "some value", "w")) {
          text.append("<Value value=\"").append(value).append("\" displayValue=\"")
              .append(pick("", "shown as this")).append("\" property=\"")
              .append(pick("valid", "valid", "valid", "missing", "invalid")).append("\"/>");
        }
      }
      text.append("</DataField>");
    }
    text.append("<DataField name=\"t\" optype=\"")
        .append(classification ? "categorical" : "continuous").append("\" dataType=\"")
        .append(classification ? pick("string", "double", "integer") : "double").append("\">");
    if (classification && random.nextBoolean()) {
      for (String value : classes) {
        text.append("<Value value=\"").append(value).append("\"/>");
      }
    }
    text.append("</DataField></DataDictionary>");
  }

  private void transformations(String element, String prefix) {
    text.append("<").append(element).append("><DefineFunction name=\"f\" optype=\"continuous\">")
        .append("<ParameterField name=\"p\"/><FieldRef field=\"p\"/></DefineFunction>")
        .append("<DerivedField name=\"").append(prefix).append("1\" optype=\"continuous\"")
        .append(" dataType=\"double\"><FieldRef field=\"x\"")
        .append(random.nextBoolean() ? " mapMissingTo=\"3\"" : "").append("/></DerivedField>")
        .append("<DerivedField name=\"").append(prefix).append("2\" optype=\"continuous\"")
        .append(" dataType=\"double\"><Apply function=\"ln\"><FieldRef field=\"y\"/></Apply>")
        .append("</DerivedField></").append(element).append(">");
  }

  private void schema(boolean target) {
    text.append("<MiningSchema>");
    for (String name : NAMES) {
      text.append("<MiningField name=\"").append(name).append("\"");
      text.append(rarely() ? " missingValueReplacement=\"1\"" : "");
      text.append(rarely() ? " outliers=\"asExtremeValues\" lowValue=\"0\" highValue=\"9\"" : "");
      text.append(rarely() ? " invalidValueTreatment=\"asMissing\"" : "").append("/>");
    }
    text.append(target ? "<MiningField name=\"t\" usageType=\"target\"/>" : "")
        .append("</MiningSchema>");
    if (rarely()) {
      text.append("<Output><OutputField name=\"o").append(random.nextInt(99))
          .append("\" feature=\"predictedValue\"/><OutputField name=\"p\" feature=\"probability\"")
          .append(" value=\"A\"/></Output>");
    }
    if (rarely()) {
      targets();
    }
    if (rarely()) {
      transformations("LocalTransformations", "l");
    }
  }

  private void targets() {
    text.append("<Targets><Target").append(random.nextBoolean() ? " field=\"t\"" : "");
    text.append(random.nextBoolean() ? " rescaleFactor=\"2.5\"" : "");
    text.append(random.nextBoolean() ? " rescaleConstant=\"-0.125\"" : "");
    text.append(random.nextBoolean() ? " min=\"0\" max=\"100\"" : "");
    text.append(random.nextBoolean() ? " castInteger=\"ceiling\"" : "").append(">");
    text.append(rarely() ? "<TargetValue value=\"A\" priorProbability=\"0.5\"/>" : "");
    text.append("</Target></Targets>");
  }

  private String function() {
    return " functionName=\"" + (classification ? "classification" : "regression") + "\"";
  }

  private void model(int depth) {
    switch (random.nextInt(depth > 2 ? 2 : 5)) {
      case 0, 1 -> tree();
      case 2 -> {
        text.append("<AnomalyDetectionModel algorithmType=\"iforest\" sampleDataSize=\"99\"")
            .append(function()).append(">");
        schema(false);
        model(depth + 1);
        text.append("</AnomalyDetectionModel>");
      }
      default -> ensemble(depth);
    }
  }

  private void ensemble(int depth) {
    text.append("<MiningModel modelName=\"m\"").append(function())
        .append(rarely() ? " isScorable=\"false\"" : "").append(">");
    schema(true);
    text.append("<Segmentation multipleModelMethod=\"").append(pick(METHODS)).append("\"");
    String missing = " missingPredictionTreatment=\"skipSegment\" missingThreshold=\".5\"";
    text.append(rarely() ? missing : "").append(">");
    extension();
    int segments = 1 + random.nextInt(5);
    for (int i = 0; i < segments; i++) {
      text.append("<Segment").append(random.nextBoolean() ? " id=\"s" + i + "\"" : "")
          .append(rarely() ? " weight=\"0.25\"" : "").append(">");
      extension();
      predicate(0);
      if (i > 0 && rarely()) {
        String other = pick(OTHER_MODELS);
        text.append("<").append(other).append("><MiningSchema/></").append(other).append(">");
      } else {
        model(depth + 1);
      }
      text.append(rarely() ? "<VariableWeight field=\"x\"/>" : "").append("</Segment>");
    }
    text.append("</Segmentation></MiningModel>");
  }

  private void strategies() {
    text.append(often() ? " missingValueStrategy=\"" + pick(MISSING) + "\"" : "");
    text.append(rarely() ? " missingValuePenalty=\"0.5\"" : "");
    text.append(random.nextBoolean() ? " noTrueChildStrategy=\"returnLastPrediction\"" : "");
    text.append(random.nextBoolean() ? " splitCharacteristic=\"multiSplit\"" : "");
  }

  private void tree() {
    scores = often();
    innerScores = random.nextBoolean();
    counts = random.nextBoolean();
    distributions = random.nextBoolean();
    innerDistributions = random.nextBoolean();
    text.append("<TreeModel").append(function());
    strategies();
    text.append(rarely() ? " isScorable=\"false\"" : "").append(">");
    extension();
    schema(random.nextBoolean());
    text.append(rarely() ? "<ModelStats/>" : "");
    node(0, true);
    text.append(rarely() ? "<ModelVerification/>" : "").append("</TreeModel>");
  }

  private String score() {
    if (classification) {
      return rarely() ? "undeclared" + random.nextInt(3) : pick(classes);
    }
    return switch (random.nextInt(8)) {
      case 0 -> "1e9";
      case 1 -> Double.toString(1e9 + random.nextInt(4));
      case 2 -> "no number";
      case 3 -> "-1.7976931348623157E308";
      case 4 -> "1.7976931348623157E308";
      default -> Double.toString(100 * random.nextGaussian());
    };
  }

  private void node(int depth, boolean root) {
    budget--;
    int children = budget <= 0 || depth > 7 ? 0 : random.nextInt(root ? 5 : 4);
    boolean leaf = children == 0;
    text.append("<Node");
    text.append(random.nextBoolean() ? " id=\"n" + budget + "\"" : "");
    text.append(scores && (leaf || innerScores) ? " score=\"" + score() + "\"" : "");
    text.append(counts && often() ? " recordCount=\"" + random.nextInt(1000) + "\"" : "");
    text.append(rarely() ? " defaultChild=\"n" + (budget - 1) + "\"" : "").append(">");
    extension();
    if (root) {
      text.append(rarely() ? "<False/>" : "<True/>");
    } else {
      predicate(0);
    }
    if (leaf && rarely()) {
      regression();
    } else if (!leaf && rarely()) {
      text.append("<DecisionTree").append(" functionName=\"")
          .append(pick("classification", "regression")).append("\"");
      strategies();
      text.append(">");
      if (random.nextBoolean()) {
        targets();
      }
      node(depth + 1, true);
      text.append("</DecisionTree>");
    } else {
      if (distributions && (leaf || innerDistributions)) {
        distribution();
      }
      for (int i = 0; i < children; i++) {
        node(depth + 1, false);
      }
    }
    text.append("</Node>");
  }

  private void distribution() {
    int kind = random.nextInt(4);
    for (String value : classes) {
      String shown = classification ? value : Integer.toString(random.nextInt(5));
      text.append("<ScoreDistribution value=\"").append(shown).append("\"");
      text.append(kind == 0 ? "" : " recordCount=\"" + (kind == 1 ? 0 : random.nextInt(50)) + "\"");
      text.append(kind < 2 || kind == 3 ? " probability=\"0.25\" confidence=\"0.2\"" : "")
          .append("/>");
    }
  }

  private void regression() {
    text.append("<Regression").append(function()).append(" normalizationMethod=\"")
        .append(pick("none", "softmax", "logit")).append("\">");
    extension();
    for (int i = 0; i < 1 + random.nextInt(4); i++) {
      text.append("<RegressionTable intercept=\"").append(random.nextGaussian())
          .append("\" targetCategory=\"").append(pick(classes)).append("\">")
          .append("<NumericPredictor name=\"x\" exponent=\"2\" coefficient=\"-1\"/>")
          .append("<CategoricalPredictor name=\"y\" value=\"1\" coefficient=\"3e-7\"/>")
          .append("<PredictorTerm coefficient=\"2\"><FieldRef field=\"x\"/><FieldRef field=\"y\"/>")
          .append("</PredictorTerm></RegressionTable>");
    }
    text.append("</Regression>");
  }

  private String field() {
    return rarely() ? pick("d1", "d2") : pick(NAMES);
  }

  private void predicate(int depth) {
    switch (random.nextInt(depth > 2 ? 3 : 6)) {
      case 0, 1 -> {
        String operator = pick(OPERATORS);
        text.append("<SimplePredicate field=\"").append(field()).append("\" operator=\"")
            .append(operator).append("\"");
        String value = pick("1", "0.5", "some value", "w".repeat(1 + random.nextInt(70)),
            "1234567.5", Double.toString(random.nextGaussian()));
        text.append(operator.contains("issing") ? "" : " value=\"" + value + "\"").append("/>");
      }
      case 2 -> {
        text.append("<SimpleSetPredicate field=\"").append(field()).append("\" booleanOperator=\"")
            .append(pick("isIn", "isNotIn")).append("\">");
        extension();
        text.append("<Array type=\"string\">")
            .append("1 \"some value\" w a_b ".repeat(random.nextInt(12)))
            .append("</Array></SimpleSetPredicate>");
      }
      case 3 -> text.append(pick("<True/>", "<False/>"));
      default -> {
        text.append("<CompoundPredicate booleanOperator=\"")
            .append(pick("and", "or", "xor", "surrogate", "surrogate")).append("\">");
        extension();
        int parts = 2 + random.nextInt(3);
        for (int i = 0; i < parts; i++) {
          predicate(depth + 1);
        }
        text.append("</CompoundPredicate>");
      }
    }
  }
}
