#pragma once

#include "moving/TableWriter.h"
#include "platform/files/NewFile.h"

namespace moving {

/// See MakeTableWriter.
class CsvWriter : public TableWriter {
 public:
  CsvWriter(const QString& path, Purpose purpose) : m_file(path), m_purpose(purpose) {}

  void Begin(const QString& name, const QStringList& headings) override;
  void Write(std::span<const QVariant> row) override;
  void Finish() override;

 private:
  QString Field(const QVariant& value) const;

  files::NewFile m_file;
  Purpose m_purpose;
  bool m_hasBegun = false;
};

}  // namespace moving
