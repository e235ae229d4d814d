// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertImageCommand.h"

#include "app/ChartEditorSession.h"
#include "app/CommonOptions.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/PictureFormat.h"
#include "app/ScratchFolder.h"
#include "host/LocalFrame.h"

namespace chartbridge {

ConvertImageCommand::ConvertImageCommand(CLI::App& group)
    : _command(group.add_subcommand(
          "image", "Turn a picture (PNG, JPEG, BMP, GIF or SVG) into one of another format")) {
  _command->add_option("image", _image, "The picture; - is standard input")
      ->type_name("IMAGE")
      ->required();
  _command
      ->add_option("-o,--output", _output,
                   "The new picture; its ending says the format: jpg, png, bmp or gif, and pdf for "
                   "SVG; - is standard output")
      ->type_name("FILE")
      ->required();
  _command
      ->add_option("-t,--type", _type,
                   "The format, whatever the ending says; for standard output png when not given")
      ->type_name("FORMAT");
  AddJavaOptions(*_command, _java);
  _command->footer(
      "Examples:\n"
      "  chartbridge convert image sales.svg -o sales.png\n"
      "  chartbridge convert image scan.bmp -o scan.jpg\n"
      "  chartbridge convert image - -o - --type gif < sales.png > sales.gif");
}

void ConvertImageCommand::Run() {
  FormatOfOutput(_output, _type);
  const OutputFile output(_output, true);
  const InputFile image(_image);

  const DumpFolder dumps;
  const JavaMachine java(_java);
  const ChartEditorSession editor(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  if (output.IsReplaceable()) {
    Convert(image, output.Target(), dumps);
    return;
  }
  // Java writes files only.
  const ScratchFolder scratch;
  const std::string file = scratch.File("picture");
  Convert(image, file, dumps);
  output.Write(InputFile(file).Text());
}

void ConvertImageCommand::Convert(const InputFile& image, const std::string& path,
                                  const DumpFolder& dumps) const {
  const ViZEditor::IMAGE_TYPE format = FormatOfOutput(_output, _type);
  if (ViZEditor::GetInstance()->ConvertImage(image.Text(), path, format)) return;
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(image.Name() + ": " + dumps.WhyEmpty());
  const bool isWriting = failure->PassedThrough("org.chartbridge.image.OutputFiles.");
  throw Failure((isWriting ? _output : image.Name()) + ": " + failure->Reason(), failure->Stack());
}

}  // namespace chartbridge
