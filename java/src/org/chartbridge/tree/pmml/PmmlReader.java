// SPDX-License-Identifier: Apache-2.0
package org.chartbridge.tree.pmml;

import java.util.ArrayList;
import java.util.List;
import java.util.regex.Matcher;
import java.util.regex.Pattern;
import org.chartbridge.chart.ChartException;
import org.chartbridge.tree.Ensemble;
import org.chartbridge.tree.Field;
import org.chartbridge.tree.FieldCatalog;
import org.chartbridge.tree.ModelPart;
import org.chartbridge.tree.OtherModel;
import org.chartbridge.tree.Predicate;
import org.chartbridge.tree.Remark;
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
      Pattern.compile("http://www\\.dmg\\.org/PMML-(\\d+)_(\\d+)(_\\d+)*/?");
  private static final Pattern VERSION = Pattern.compile("4\\.[0-4](\\.\\d+)*");

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
    final List<TargetsReader.Target> targets = new ArrayList<>();
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
        case "AnomalyDetectionModel" -> models.add(anomaly(scope));
        default -> skipOther(models);
      }
    }
    in.finish();
    if (trees.isEmpty()) {
      throw in.error(offset, models.isEmpty()
          ? "the document has no model; a <TreeModel> or a <MiningModel> of trees is expected"
          : "the document has no tree; its model is " + described(models.get(0)));
    }
    return new ClassUnion(trees).document(
        version, models.size() == 1 ? models.get(0) : together(models));
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
      segments.add(alone(model));
    }
    return new Ensemble(null, Ensemble.SEPARATE, "", List.of(), segments);
  }

  private static Ensemble.Segment alone(ModelPart model) {
    return new Ensemble.Segment(null, new Predicate.Constant(true), 1, null, model);
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
    String named = known ? namespace.group(1) + "." + namespace.group(2) : "";
    for (String found : new String[] {named, version == null ? "" : version.trim()}) {
      if (!found.isEmpty() && !VERSION.matcher(found).matches()) {
        throw in.error("the PMML version is " + found + "; versions 4.0 to 4.4 are read");
      }
    }
    return version == null || version.isBlank() ? named : version.trim();
  }

  private boolean common(Common common, Scope outer) {
    switch (in.name()) {
      case "MiningSchema" -> {
        String target = new MiningFieldReader(in).read(common.fields);
        common.target = target == null ? common.target : target;
      }
      case "Output" -> common.output = output(outer);
      case "Targets" -> common.targets.addAll(new TargetsReader(in).read());
      case "LocalTransformations" -> new FieldReader(in).read(common.fields);
      default -> {
        return false;
      }
    }
    return true;
  }

  /**
   * The name of the predicted value for models further on, or null. They see all output fields.
   */
  private String output(Scope outer) {
    String first = null;
    FieldReader reader = new FieldReader(in);
    while (in.nextChild()) {
      if (!in.name().equals("OutputField")) {
        in.skip();
        continue;
      }
      String feature = in.attribute("feature");
      boolean value = feature == null || feature.equals("predictedValue");
      first = value && first == null ? in.attribute("name") : first;
      reader.readOutputField(outer.fields());
    }
    return first;
  }

  private TreeModel tree(Scope outer) {
    int offset = in.offset();
    String name = in.attribute("modelName");
    TreeAttributes attributes = TreeAttributes.read(in);
    boolean classification = attributes.classification();
    Common common = new Common(outer.fields());
    FieldMentions mentions = new FieldMentions(in, common.fields);
    TreeNode root = null;
    while (in.nextChild()) {
      if (in.name().equals("Node") && root == null) {
        root = new NodeReader(in, common.fields, mentions).read();
      } else if (!common(common, outer)) {
        in.skip();
      }
    }
    if (root == null) {
      throw in.error(offset, "the tree has no <Node>");
    }
    mentions.check();
    Scope scope = outer.with(common);
    // A tree that predicts numbers within a classification predicts something else than the class.
    Field target = scope.targetField() == null ? null : scope.fields().find(scope.targetField());
    boolean ownTarget = common.target != null || classification || target == null
        || target.continuous();
    String targetField = ownTarget ? scope.targetField() : null;
    List<Remark> remarks = new ArrayList<>(attributes.remarks());
    remarks.addAll(TargetsReader.of(common.targets, scope.targetField()));
    TreeModel tree = new TreeModel(trees.size() + 1, name, classification, targetField,
        targetLabel(scope.fields(), targetField, scope.output()),
        classes(scope.fields(), targetField, classification), attributes.missingValues(),
        attributes.returnsLastPrediction(), scope.conditions(), remarks, scope.fields(), root);
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

  private Ensemble mining(Scope outer) {
    String name = in.attribute("modelName");
    List<Remark> remarks = new ArrayList<>(TreeAttributes.scorable(in));
    Common common = new Common(outer.fields());
    String method = "model";
    List<Ensemble.Segment> segments = new ArrayList<>();
    while (in.nextChild()) {
      Scope scope = outer.with(common);
      switch (in.name()) {
        case "Segmentation" -> {
          method = in.required("multipleModelMethod");
          addMissing(remarks);
          segmentation(scope, segments);
        }
        case "DecisionTree" -> segments.add(alone(tree(scope)));
        case "Regression" -> segments.add(alone(other()));
        default -> {
          if (!common(common, outer)) {
            in.skip();
          }
        }
      }
    }
    String target = outer.with(common).targetField();
    remarks.addAll(TargetsReader.of(common.targets, target));
    String targetLabel = targetLabel(common.fields, target, null);
    String label = common.output != null && common.target == null ? common.output : targetLabel;
    return new Ensemble(name, method, label, remarks, segments);
  }

  /** What the current {@code Segmentation} says about members without a prediction. */
  private void addMissing(List<Remark> remarks) {
    int treatment = in.choice(
        "missingPredictionTreatment", 0, "continue", "skipSegment", "returnMissing");
    if (treatment == 0) {
      return;
    }
    String threshold = in.attribute("missingThreshold");
    boolean limited = in.number("missingThreshold", 1) < 1;
    String consequence = treatment == 1
        ? "A part without a prediction is left out"
        : "When a part has no prediction, there is none at all";
    String beyond = treatment == 1
        ? "; beyond a share of {0} of such parts there is no prediction."
        : ", once the share of such parts is beyond {0}.";
    remarks.add(limited ? Remark.of(consequence + beyond, threshold.strip())
        : Remark.of(consequence + "."));
  }

  private void segmentation(Scope scope, List<Ensemble.Segment> segments) {
    FieldMentions mentions = new FieldMentions(in, scope.fields());
    while (in.nextChild()) {
      switch (in.name()) {
        case "Segment" -> segments.add(segment(scope, mentions));
        case "LocalTransformations" -> new FieldReader(in).read(scope.fields());
        default -> in.skip();
      }
    }
    mentions.check();
  }

  private Ensemble.Segment segment(Scope scope, FieldMentions mentions) {
    int offset = in.offset();
    String id = in.attribute("id");
    double weight = in.number("weight", 1);
    String weightField = null;
    Predicate predicate = null;
    ModelPart model = null;
    PredicateReader predicates = new PredicateReader(in, mentions);
    while (in.nextChild()) {
      if (predicates.isPredicate() && predicate == null) {
        predicate = predicates.read();
      } else if (model == null && isModel(in.name())) {
        if (predicate == null) {
          throw in.error(offset, "<Segment>" + named(id) + " has no predicate");
        }
        model = member(scope.under(predicate));
      } else {
        weightField = in.name().equals("VariableWeight") ? in.required("field") : weightField;
        in.skip();
      }
    }
    if (model == null) {
      throw in.error(offset, "<Segment>" + named(id) + " has no model");
    }
    return new Ensemble.Segment(id, predicate, weight, weightField, model);
  }

  private ModelPart member(Scope scope) {
    return switch (in.name()) {
      case "TreeModel" -> tree(scope);
      case "MiningModel" -> mining(scope);
      case "AnomalyDetectionModel" -> anomaly(scope);
      default -> other();
    };
  }

  private OtherModel other() {
    OtherModel other = new OtherModel(in.name());
    in.skip();
    return other;
  }

  /** The model within, which yields what is compared: a tree, or more of them. */
  private ModelPart anomaly(Scope outer) {
    List<Remark> remarks = new ArrayList<>(TreeAttributes.scorable(in));
    in.required("algorithmType");
    String algorithm = in.attribute("algorithmType").strip();
    String sample = in.attribute("sampleDataSize");
    boolean forest = algorithm.equals("iforest");
    String what = forest ? "isolation forest, the shorter the way to a leaf, the more unusual"
        + " is the record" : algorithm;
    remarks.add(sample == null || !forest ? Remark.of("Anomaly detection: " + what + ".")
        : Remark.of("Anomaly detection: " + what + "; samples of {0} records.", sample.strip()));
    Common common = new Common(outer.fields());
    ModelPart model = null;
    while (in.nextChild()) {
      if (model == null && isModel(in.name())) {
        model = member(outer.with(common));
      } else if (!common(common, outer)) {
        in.skip();
      }
    }
    if (model instanceof TreeModel tree) {
      TreeModel remarked = tree.withRemarks(remarks);
      trees.set(tree.number() - 1, remarked);
      return remarked;
    }
    return model instanceof Ensemble ensemble
        ? ensemble.withRemarks(remarks) : new OtherModel("AnomalyDetectionModel");
  }

  private static String named(String id) {
    return id == null ? "" : " with the id \"" + id + "\"";
  }
}
