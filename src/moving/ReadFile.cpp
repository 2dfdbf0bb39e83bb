#include "moving/ReadFile.h"

#include "moving/CsvReader.h"
#include "platform/automation/Error.h"

using namespace Qt::StringLiterals;

namespace moving {

namespace {

// Tells on one table of a file.
class OneTable : public SourceListener {
 public:
  OneTable(const QString& wanted, SourceListener& listener) : m_wanted(wanted), m_listener(listener) {}

  void BeginTable(const SourceTable& table) override {
    m_names.append(table.name);
    m_isWanted = m_wanted.compare(table.name, Qt::CaseInsensitive) == 0 || m_wanted == QString::number(m_names.size());
    m_isFound = m_isFound || m_isWanted;
    if (m_isWanted) {
      m_listener.BeginTable(table);
    }
  }
  void Row(const SourceRow& row) override {
    if (m_isWanted) {
      m_listener.Row(row);
    }
  }
  void EndTable(qint64 missing) override {
    if (m_isWanted) {
      m_listener.EndTable(missing);
    }
  }
  // What is not read is not missed.
  void Linked(const QString& /*name*/) override {}
  void Unreadable(const QString& /*name*/) override {}

  void RequireFound() const {
    if (!m_isFound) {
      throw automation::Error(automation::InvalidProcedureCall,
                              u"El archivo no tiene la hoja «%1». Las hay: %2."_s.arg(m_wanted, m_names.join(u", "_s)));
    }
  }

 private:
  QString m_wanted;
  SourceListener& m_listener;
  QStringList m_names;
  bool m_isWanted = false;
  bool m_isFound = false;
};

void ReadAll(const QString& path, const ReadWishes& wishes, SourceListener& listener, const database::Stop& stop) {
  HeadedRows headed(wishes.headings, listener);
  if (KindOfFile(path) == FileKind::List) {
    ReadCsv(path, wishes.list, headed, stop);
  } else {
    ReadForeignFile(path, headed, stop);
  }
}

}  // namespace

void ReadFile(const QString& path, const ReadWishes& wishes, SourceListener& listener, const database::Stop& stop) {
  if (wishes.sheet.isEmpty()) {
    return ReadAll(path, wishes, listener, stop);
  }
  OneTable one(wishes.sheet, listener);
  ReadAll(path, wishes, one, stop);
  one.RequireFound();
}

}  // namespace moving
