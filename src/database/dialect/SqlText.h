#pragma once

#include "database/dialect/Plan.h"

#include <QString>
#include <QStringView>

#include <initializer_list>
#include <span>
#include <vector>

namespace database {

/// A piece of a statement for an engine: its text, and at which places of the text which parameters go. What a piece
/// holds is never looked at again, so that nothing in it can be taken for something else.
class SqlText {
 public:
  struct Place {
    qsizetype position = 0;
    Binding binding;
  };

  SqlText() = default;
  SqlText(QString text) : m_text(std::move(text)) {}  // NOLINT: a text is a piece without parameters
  static SqlText Parameter(const Binding& binding);

  /// The form with the pieces in the places of %1, %2...; %* stands for all of them with commas between.
  static SqlText Filled(QStringView form, std::span<const SqlText> pieces);
  static SqlText Filled(QStringView form, std::initializer_list<SqlText> pieces) {
    return Filled(form, std::span(pieces.begin(), pieces.size()));
  }
  static SqlText Joined(std::span<const SqlText> pieces, QStringView between);

  SqlText& operator+=(const SqlText& next);
  SqlText& operator+=(QStringView next);

  /// The text without its parameters.
  const QString& Text() const { return m_text; }
  /// In the order of the text.
  const std::vector<Place>& Places() const { return m_places; }

 private:
  QString m_text;
  std::vector<Place> m_places;
};

}  // namespace database
