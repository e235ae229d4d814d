// SPDX-License-Identifier: Apache-2.0
#include "app/JavaContract.h"

#include <cstddef>

namespace chartbridge {

namespace {

constexpr JavaMethodKind kConstructor = JavaMethodKind::kConstructor;
constexpr JavaMethodKind kInstance = JavaMethodKind::kInstance;
constexpr JavaMethodKind kNative = JavaMethodKind::kNative;

JavaClass ChartImager() {
  return {"charts",
          "com/tesk/charteditor/ChartImager",
          {{kConstructor, "<init>", "()V"},
           {kInstance, "RenderToFile",
            "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)"
            "Z"},
           {kInstance, "RenderToFile",
            "([B[BLjava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z"},
           {kInstance, "RenderImageMapToFile",
            "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDZLjava/lang/String;[BLjava/lang/String;"
            "[B)Z"},
           {kInstance, "RenderToMem",
            "([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B"},
           {kInstance, "RenderImageMapToMemory",
            "([BLjava/nio/ByteBuffer;IDZLjava/lang/String;[BLjava/lang/String;[B)[B"},
           {kInstance, "EmbedHistogramInGraph", "([B[BLjava/nio/ByteBuffer;I)[B"},
           {kInstance, "ConvertImage", "([BLjava/lang/String;I)Z"},
           {kInstance, "ApplyStyleSheet", "([B[B)[B"}}};
}

JavaClass TreeImager() {
  return {"trees",
          "com/tesk/treemodeleditor/TreeImager",
          {{kConstructor, "<init>", "()V"},
           {kInstance, "renderToFile", "([B[BLjava/lang/String;IZI)Z"},
           {kInstance, "calculateSizeArray", "([B[B)[J"},
           {kInstance, "renderToMemory", "([B[BII)[B"},
           {kInstance, "setSchemaPath", "(Ljava/lang/String;)V"},
           {kInstance, "renderModelToMemory", "([B[B[B[BLjava/lang/String;II)Ljava/util/HashMap;"},
           {kInstance, "renderModelToFiles",
            "([B[B[B[BLjava/lang/String;Ljava/lang/String;II)[Ljava/lang/String;"}}};
}

JavaClass TreeEditor() {
  return {"tree windows",
          "com/tesk/treemodeleditor/TreeEditor",
          {{kConstructor, "<init>", "()V"},
           {kInstance, "setNeedsRerendering", "(Z)V"},
           {kInstance, "needsRerendering", "()Z"},
           {kInstance, "setThreadId", "(I)V"},
           {kInstance, "setDPI", "(I)V"},
           {kInstance, "setSchemaPath", "(Ljava/lang/String;)V"},
           {kInstance, "renderPMMLToScreen", "(IIII[B[B)V"},
           {kInstance, "renderToFile", "([B[BLjava/lang/String;IZ)Z"},
           {kInstance, "calculateSizeArray", "([B[B)[J"},
           {kInstance, "getSizeArray", "()[J"},
           {kInstance, "extractDisplayData", "()[B"},
           {kInstance, "extractCompressedPMML", "()[B"},
           {kInstance, "deActivate", "()V"},
           {kInstance, "close", "()V"}}};
}

JavaClass JsonImager() {
  return {"chart JSON",
          "com/tesk/java_client/core/documents/output/export/JsonImager",
          {{kConstructor, "<init>", "()V"},
           {kInstance, "addGeoJson", "([B)V"},
           {kInstance, "exportChartJsonToFile", "(Ljava/lang/String;[BZLjava/lang/String;I)Z"},
           {kInstance, "exportInteractiveJsonToFile",
            "(Ljava/lang/String;[BLjava/lang/String;Ljava/lang/String;Ljava/lang/String;I)Z"}}};
}

JavaClass Converter() {
  return {"conversion",
          "com/tesk/vizconverter/VizConverter",
          {{kConstructor, "<init>", "()V"},
           {kInstance, "ConvertGPL", "([B)[B"},
           {kInstance, "ConvertXml", "([B)[B"},
           {kInstance, "getErrorMessage", "()Ljava/lang/String;"},
           {kInstance, "graphBoardConverterToXml", "([B)[B"},
           {kInstance, "graphBoardApplyStyleSheet", "([B[B)[B"}}};
}

JavaClass DocumentAdapter() {
  return {"documents",
          "com/tesk/java_client/ex_access/ExKvoAdapter",
          {{kConstructor, "<init>", "(Z)V"},
           {kInstance, "exportOutput", "(Ljava/lang/String;)Ljava/lang/String;"},
           {kInstance, "writeOutputDocumentFile", "(Ljava/lang/String;IZ)Z"},
           {kInstance, "createOutputDocument", "(Ljava/nio/ByteBuffer;Ljava/lang/String;)Z"}}};
}

JavaClass ApplyTemplate() {
  return {"templates",
          "com/tesk/charteditor/template/ApplyTemplate",
          {{kNative, "apply", "(Ljava/lang/String;Ljava/lang/String;)Ljava/lang/String;"}}};
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

std::string PrimitiveName(char code) {
  switch (code) {
    case 'Z':
      return "boolean";
    case 'B':
      return "byte";
    case 'I':
      return "int";
    case 'J':
      return "long";
    case 'D':
      return "double";
    default:
      return "void";
  }
}

/// The Java name of the type that begins at `at`, which is moved behind it.
std::string TypeName(const std::string& signature, std::size_t& at) {
  std::string brackets;
  while (signature[at] == '[') {
    brackets += "[]";
    ++at;
  }
  if (signature[at] != 'L') return PrimitiveName(signature[at++]) + brackets;
  const std::size_t end = signature.find(';', at);
  const std::string name = JavaName(signature.substr(at + 1, end - at - 1));
  at = end + 1;
  return name + brackets;
}

}  // namespace

const std::vector<JavaClass>& JavaContract() {
  static const std::vector<JavaClass> contract = {ChartImager(),  TreeImager(), TreeEditor(),
                                                  JsonImager(),   Converter(),  DocumentAdapter(),
                                                  ApplyTemplate()};
  return contract;
}

std::string JavaName(const std::string& name) {
  std::string dotted = name;
  ReplaceAll(dotted, "/", ".");
  return dotted;
}

std::string WithoutPackages(std::string text) {
  for (const char* package : {"java.lang.", "java.nio.", "java.util."}) {
    ReplaceAll(text, package, "");
  }
  ReplaceAll(text, ", ", ",");
  ReplaceAll(text, ",", ", ");
  return text;
}

std::string JavaDeclaration(const JavaClass& type, const JavaMethod& method) {
  std::string parameters;
  std::size_t at = 1;
  while (method.signature[at] != ')') {
    if (!parameters.empty()) parameters += ",";
    parameters += TypeName(method.signature, at);
  }
  parameters = WithoutPackages("(" + parameters + ")");
  if (method.kind == kConstructor) {
    return type.name.substr(type.name.rfind('/') + 1) + parameters;
  }
  ++at;
  const std::string modifier = method.kind == kNative ? "native " : "";
  return modifier + WithoutPackages(TypeName(method.signature, at)) + " " + method.name +
         parameters;
}

}  // namespace chartbridge
