#include "host/mailing/output/Outputs.h"

#include "host/mailing/output/FileNames.h"
#include "host/mailing/output/PdfCutter.h"
#include "host/mailing/output/PdfPages.h"
#include "platform/automation/Error.h"
#include "platform/files/NewFile.h"
#include "platform/process/PrivateFiles.h"

#include <QBuffer>
#include <QDir>

#include <optional>

using namespace Qt::StringLiterals;

namespace host {

namespace {

// So many parts are painted into one PDF before it is cut: fonts and pictures are embedded once for all of them.
constexpr int partsAtOnce = 250;

/// Files in a folder, each whole or not there.
class Folder {
 public:
  explicit Folder(const QString& path) : m_folder(path) {
    if (!process::CreatePrivateFolder(path)) {
      throw automation::Error(automation::InvalidProcedureCall,
                              u"No se puede usar la carpeta «%1». Compruebe el nombre y sus permisos."_s.arg(path));
    }
  }

  void Write(const QString& wishedName, const QString& suffix, const std::function<void(QIODevice& file)>& write) {
    const QString path = m_folder.filePath(m_names.Next(wishedName, suffix));
    if (m_file) {
      m_file->Next(path);
    } else {
      m_file.emplace(path);
    }
    write(m_file->Device());
    m_file->Finish();
  }

 private:
  QDir m_folder;
  FileNames m_names;
  std::optional<files::NewFile> m_file;
};

/// Some parts in one PDF, and where each ends.
struct Painted {
  QByteArray content;
  QList<int> ends;
};

Painted PaintSome(const PrintedWork& work, int first, const RunControl& control) {
  Painted painted;
  QBuffer buffer(&painted.content);
  buffer.open(QIODevice::WriteOnly);
  PdfPages pages(buffer, work.Title(), work.Paper());
  const int end = std::min(work.Count(), first + partsAtOnce);
  for (int part = first; part < end && !control.IsCancelled(); ++part) {
    work.Paint(part, pages);
    painted.ends.append(pages.Count());
  }
  pages.Finish();
  return painted;
}

/// Runs what writes files one by one; an error says how many there are.
int CountFiles(const QString& folder, const RunControl& control, const std::function<void()>& write) {
  try {
    write();
  } catch (const automation::Error& error) {
    throw automation::Error(error.Number(), u"%1 Quedan %2 de %3 archivos en «%4»."_s.arg(
                                                error.Description(), QString::number(control.Done()),
                                                QString::number(control.Parts()), folder));
  }
  return control.Done();
}

}  // namespace

bool WritePdf(const PrintedWork& work, const QString& file, RunControl& control) {
  control.Begin(work.Count());
  files::NewFile target(file);
  PdfPages pages(target.Device(), work.Title(), work.Paper());
  for (int part = 0; part < work.Count(); ++part) {
    if (control.IsCancelled()) {
      pages.Finish();
      return false;
    }
    work.Paint(part, pages);
    control.PartDone();
  }
  pages.Finish();
  target.Finish();
  return true;
}

int WritePdfFiles(const PrintedWork& work, const QString& folder, RunControl& control) {
  control.Begin(work.Count());
  Folder target(folder);
  return CountFiles(folder, control, [&] {
    for (int first = 0; first < work.Count() && !control.IsCancelled(); first += partsAtOnce) {
      const Painted painted = PaintSome(work, first, control);
      if (painted.ends.isEmpty()) {
        break;
      }
      const PdfCutter cutter(painted.content);
      int begin = 0;
      for (int i = 0; i < painted.ends.size() && !control.IsCancelled(); ++i) {
        const int end = painted.ends[i];
        target.Write(work.NameOf(first + i), u".pdf"_s, [&](QIODevice& file) { cutter.WritePages(begin, end, file); });
        begin = end;
        control.PartDone();
      }
    }
  });
}

int WriteFiles(const PrintedWork& work, const QString& folder, const QString& suffix,
               const std::function<QByteArray(int part)>& part, RunControl& control) {
  control.Begin(work.Count());
  Folder target(folder);
  return CountFiles(folder, control, [&] {
    for (int i = 0; i < work.Count() && !control.IsCancelled(); ++i) {
      target.Write(work.NameOf(i), suffix, [&](QIODevice& file) { file.write(part(i)); });
      control.PartDone();
    }
  });
}

}  // namespace host
