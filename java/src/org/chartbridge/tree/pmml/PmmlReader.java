// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.tree.Ensemble;
import org.chartbridge.tree.Field;
import org.chartbridge.tree.FieldCatalog;
import org.chartbridge.tree.MissingValues;
import org.chartbridge.tree.ModelPart;
import org.chartbridge.tree.OtherModel;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.TreeDocument;
import org.chartbridge.tree.TreeException;
import org.chartbridge.tree.TreeModel;
import org.chartbridge.tree.TreeNode;
import org.chartbridge.xml.XmlEncoding;

/**
 * Reads PMML documents. Elements that it does not know and elements of other namespaces are passed
 * over.
 */
public final class PmmlReader {
  private static final Pattern NAMESPACE =
      Pattern.compile("http://www\\.dmg\\.org/PMML-(\\d+)_(\\d+).*");
  private static final Pattern VERSION = Pattern.compile("(\\d+)(\\.\\d+)*");
  private static final String[] MISSING_VALUES =
      Arrays.stream(MissingValues.values()).map(MissingValues::pmmlName).toArray(String[]::new);
  private static final int NULL_PREDICTION = 0;

  /** What models hand down to those within them. */
  private record Scope(
      FieldCatalog fields, String targetField, String output, List<Predicate> conditions) {
    Scope with(Common common) {
      return new Scope(common.fields, common.target == null ? targetField : common.target,
          common.output == null ? output : common.output, conditions);
    }

    Scope under(Predicate condition) {
      List<Predicate> all = new ArrayList<>(conditions);
      if (!(condition instanceof Predicate.Constant constant && constant.value())) {
        all.add(condition);
      }
      return new Scope(fields, targetField, output, all);
    }
  }

  /** What all kinds of models have in front of their own content. */
  private static final class Common {
    final FieldCatalog fields;
    String target;
    String output;

    Common(FieldCatalog outer) {
      fields = new FieldCatalog(outer);
    }
  }

  private final PmmlCursor in;
  private final List<TreeModel> trees = new ArrayList<>();

  private PmmlReader(String text) {
    this.in = new PmmlCursor(text);
  }

  /**
   * Reads a document.
   *
   * @param bytes the document in the encoding that it declares, or compressed with gzip
   * @throws TreeException when it is not PMML of version 4, is malformed, or has no tree; the
   *     message says where
   */
  public static TreeDocument read(byte[] bytes) {
    byte[] document = PmmlBytes.expand(bytes);
    if (document.length == 0) {
      throw new TreeException("The PMML document is empty.");
    }
    String text;
    try {
      text = XmlEncoding.decode(document);
    } catch (ChartException e) {
      throw new TreeException("PMML document, " + e.getMessage() + ".", e);
    }
    if (text.isBlank()) {
      throw new TreeException("The PMML document is empty.");
    }
    return new PmmlReader(text).document();
  }

  private TreeDocument document() {
    in.root();
    int offset = in.offset();
    String version = version();
    FieldCatalog fields = new FieldCatalog(null);
    Scope scope = new Scope(fields, null, null, List.of());
    List<ModelPart> models = new ArrayList<>();
    while (in.nextChild()) {
      switch (in.name()) {
        case "DataDictionary", "TransformationDictionary" -> new FieldReader(in).read(fields);
        case "TreeModel" -> models.add(tree(scope));
        case "MiningModel" -> models.add(mining(scope));
        default -> skipOther(models);
      }
    }
    in.finish();
    if (trees.isEmpty()) {
      throw in.error(offset, models.isEmpty()
          ? "the document has no model; a <TreeModel> or a <MiningModel> of trees is expected"
          : "the document has no tree; its model is " + described(models.get(0)));
    }
    return new TreeDocument(version, models.size() == 1 ? models.get(0) : together(models), trees);
  }

  private static String described(ModelPart model) {
    return model instanceof OtherModel other
        ? "a <" + other.element() + ">"
        : "a <MiningModel> without trees";
  }

  /** Models side by side, as a document may have. */
  private static Ensemble together(List<ModelPart> models) {
    List<Ensemble.Segment> segments = new ArrayList<>();
    for (ModelPart model : models) {
      segments.add(new Ensemble.Segment(null, new Predicate.Constant(true), 1, model));
    }
    return new Ensemble(null, "separate models", "", segments);
  }

  private void skipOther(List<ModelPart> models) {
    if (isModel(in.name())) {
      models.add(new OtherModel(in.name()));
    }
    in.skip();
  }

  private static boolean isModel(String name) {
    return name.endsWith("Model") || switch (name) {
      case "NeuralNetwork", "RuleSetModel", "Scorecard" -> true;
      default -> false;
    };
  }

  private String version() {
    Matcher namespace = NAMESPACE.matcher(in.namespaceUri());
    boolean known = namespace.matches();
    if (!in.name().equals("PMML") || !known && !in.namespaceUri().isEmpty()) {
      String where = in.namespaceUri().isEmpty() ? "" : " in the namespace " + in.namespaceUri();
      throw in.error("found <" + in.name() + ">" + where
          + ", expected <PMML>; this is no PMML document");
    }
    String version = in.attribute("version");
    if (version == null) {
      version = known ? namespace.group(1) + "." + namespace.group(2) : "";
    }
    Matcher number = VERSION.matcher(version.trim());
    boolean four = number.matches() && number.group(1).equals("4");
    if (!version.isBlank() && !four) {
      throw in.error("the PMML version is " + version + "; versions 4.0 to 4.4 are read");
    }
    return version.trim();
  }

  private boolean common(Common common) {
    switch (in.name()) {
      case "MiningSchema" -> {
        String target = miningSchema();
        common.target = target == null ? common.target : target;
      }
      case "Output" -> common.output = output();
      case "LocalTransformations" -> new FieldReader(in).read(common.fields);
      default -> {
        return false;
      }
    }
    return true;
  }

  /** The field to predict, or null. */
  private String miningSchema() {
    String target = null;
    while (in.nextChild()) {
      String usage = in.attribute("usageType");
      boolean isTarget = "target".equals(usage) || "predicted".equals(usage);
      if (in.name().equals("MiningField") && isTarget && target == null) {
        target = in.required("name");
      }
      in.skip();
    }
    return target;
  }

  /** The name of the predicted value for models further on, or null. */
  private String output() {
    String first = null;
    while (in.nextChild()) {
      String feature = in.attribute("feature");
      boolean value = feature == null || feature.equals("predictedValue");
      if (in.name().equals("OutputField") && value && first == null) {
        first = in.attribute("name");
      }
      in.skip();
    }
    return first;
  }

  private ModelPart tree(Scope outer) {
    int offset = in.offset();
    String name = in.attribute("modelName");
    in.required("functionName");
    boolean classification =
        in.choice("functionName", 0, "classification", "regression") == 0;
    MissingValues missing = MissingValues.values()[
        in.choice("missingValueStrategy", MissingValues.NONE.ordinal(), MISSING_VALUES)];
    boolean lastPrediction = in.choice("noTrueChildStrategy", NULL_PREDICTION,
        "returnNullPrediction", "returnLastPrediction") != NULL_PREDICTION;
    Common common = new Common(outer.fields());
    TreeNode root = null;
    while (in.nextChild()) {
      if (in.name().equals("Node") && root == null) {
        root = new NodeReader(in).read();
      } else if (!common(common)) {
        in.skip();
      }
    }
    if (root == null) {
      throw in.error(offset, "the tree has no <Node>");
    }
    Scope scope = outer.with(common);
    // A tree that predicts numbers within a classification predicts something else than the class.
    Field target = scope.targetField() == null ? null : scope.fields().find(scope.targetField());
    boolean ownTarget = common.target != null || classification || target == null
        || target.continuous();
    String targetField = ownTarget ? scope.targetField() : null;
    TreeModel tree = new TreeModel(trees.size() + 1, name, classification, targetField,
        targetLabel(scope.fields(), targetField, scope.output()),
        classes(scope.fields(), targetField, classification), missing, lastPrediction,
        scope.conditions(), scope.fields(), root);
    trees.add(tree);
    return tree;
  }

  private static String targetLabel(FieldCatalog fields, String target, String output) {
    if (target != null) {
      return fields.label(target);
    }
    return output == null ? "" : output;
  }

  private static List<String> classes(
      FieldCatalog fields, String target, boolean classification) {
    Field field = target == null || !classification ? null : fields.find(target);
    return field == null ? List.of() : List.copyOf(field.valueLabels().keySet());
  }

  private ModelPart mining(Scope outer) {
    String name = in.attribute("modelName");
    Common common = new Common(outer.fields());
    String method = "model";
    List<Ensemble.Segment> segments = new ArrayList<>();
    while (in.nextChild()) {
      Scope scope = outer.with(common);
      switch (in.name()) {
        case "Segmentation" -> {
          method = in.required("multipleModelMethod");
          segmentation(scope, segments);
        }
        case "DecisionTree" ->
            segments.add(new Ensemble.Segment(null, new Predicate.Constant(true), 1, tree(scope)));
        default -> {
          if (!common(common)) {
            in.skip();
          }
        }
      }
    }
    String target = targetLabel(common.fields, outer.with(common).targetField(),
        null);
    String label = common.output != null && common.target == null ? common.output : target;
    return new Ensemble(name, method, label, segments);
  }

  private void segmentation(Scope scope, List<Ensemble.Segment> segments) {
    while (in.nextChild()) {
      if (in.name().equals("Segment")) {
        segments.add(segment(scope));
      } else {
        in.skip();
      }
    }
  }

  private Ensemble.Segment segment(Scope scope) {
    int offset = in.offset();
    String id = in.attribute("id");
    double weight = in.number("weight", 1);
    Predicate predicate = null;
    ModelPart model = null;
    PredicateReader predicates = new PredicateReader(in);
    while (in.nextChild()) {
      if (predicates.isPredicate() && predicate == null) {
        predicate = predicates.read();
      } else if (model == null && isModel(in.name())) {
        if (predicate == null) {
          throw in.error(offset, "<Segment>" + named(id) + " has no predicate");
        }
        model = member(scope.under(predicate));
      } else {
        in.skip();
      }
    }
    if (model == null) {
      throw in.error(offset, "<Segment>" + named(id) + " has no model");
    }
    return new Ensemble.Segment(id, predicate, weight, model);
  }

  private ModelPart member(Scope scope) {
    switch (in.name()) {
      case "TreeModel":
        return tree(scope);
      case "MiningModel":
        return mining(scope);
      default:
        OtherModel other = new OtherModel(in.name());
        in.skip();
        return other;
    }
  }

  private static String named(String id) {
    return id == null ? "" : " with the id \"" + id + "\"";
  }
}
