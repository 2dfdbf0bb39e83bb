#include "reader/Confinement.h"
#include "reader/DesktopReader.h"
#include "reader/FrameWriter.h"
#include "reader/OdsReader.h"
#include "reader/XlsxReader.h"
#include "reader/ZipFile.h"

#include <unistd.h>
#include <exception>

/// kel-lector: reads a database or spreadsheet file of another program from its standard input, and writes what is in
/// it to its standard output as frames (FrameFormat.h). It is a process of its own because what it reads may be
/// hostile.
int main() {
  const reader::MappedFile file = reader::MapAndConfine();
  if (file.bytes == nullptr) {
    return 2;
  }
  bool isWhole = false;
  try {
    reader::FrameWriter frames;
    if (const reader::ZipFile zip(file); zip.IsOne()) {
      isWhole = zip.Has("xl/workbook.xml") ? reader::ReadXlsx(zip, frames) : reader::ReadOds(zip, frames);
    } else {
      isWhole = reader::ReadDesktopFile(file, frames);
    }
    if (isWhole) {
      frames.Plain(reader::Frame::End);
    }
  } catch (const std::exception&) {
    isWhole = false;
  }
  // Nothing is tidied up: that, too, may ask the system for what is forbidden.
  _exit(isWhole ? 0 : 1);
}
