#pragma once

#include "documents/labels/Sheet.h"
#include "host/records/NodeCatalog.h"
#include "platform/adodb/Connection.h"

#include <QString>
#include <QWidget>

#include <optional>

namespace host {

/// How a record looks on paper: a letter's beginning, a sheet of labels. Other kinds of records have nothing of it.
struct RecordPreview {
  QString text;
  std::optional<documents::Sheet> sheet;
};

/// For any thread. Errors of the connection leave it.
RecordPreview ReadPreview(adodb::Connection& connection, const Node& node, int id);

/// A sheet of labels on its paper, as large as there is room.
class SheetThumbnail : public QWidget {
 public:
  explicit SheetThumbnail(QWidget* parent = nullptr);

  void Show(const std::optional<documents::Sheet>& sheet);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<documents::Sheet> m_sheet;
};

}  // namespace host
