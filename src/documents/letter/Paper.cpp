#include "documents/letter/Paper.h"

#include <QSizeF>

namespace documents {

namespace {

constexpr Paper a4{.name = u"A4", .width = 210000, .height = 297000};

}  // namespace

QPageSize Paper::PageSize() const {
  constexpr double micrometresPerMillimetre = 1000;
  return QPageSize(QSizeF(double(width), double(height)) / micrometresPerMillimetre, QPageSize::Millimeter,
                   name.toString());
}

const Paper& UsualPaper() {
  return a4;
}

}  // namespace documents
