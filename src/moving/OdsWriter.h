#pragma once

#include "moving/TableWriter.h"
#include "platform/files/NewFile.h"

#include <QTemporaryFile>
#include <QXmlStreamWriter>

namespace moving {

/// See MakeTableWriter. The sheets wait in a nameless file beside the new one until they are packed.
class OdsWriter : public TableWriter {
 public:
  explicit OdsWriter(const QString& path);

  void Begin(const QString& name, const QStringList& headings) override;
  void Write(std::span<const QVariant> row) override;
  void Finish() override;

 private:
  void EndTable();
  void Cell(const QVariant& value);
  void TextCell(const QString& text);
  void Paragraph(const QString& text);
  [[noreturn]] void Fail() const;

  QString m_path;
  files::NewFile m_file;
  QTemporaryFile m_content;
  QXmlStreamWriter m_xml;
  int m_rows = 0;
  bool m_isInTable = false;
};

}  // namespace moving
