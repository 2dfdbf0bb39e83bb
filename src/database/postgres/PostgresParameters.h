#pragma once

#include "database/engine/ParameterValues.h"

#include <QByteArray>

#include <vector>

namespace database {

/// The values of a statement as the server takes them. Whole numbers are bigint, fractions and amounts numeric, texts
/// bpchar, patterns of LIKE text. The server knows no U+0000: it travels as U+FDD0, which is no character, and which
/// itself becomes U+FFFD (see TextFromServer).
class PostgresParameters {
 public:
  /// `values` must outlive the object. Raises StatementTooBig for more than the protocol can number.
  PostgresParameters(const Plan& plan, const ParameterValues& values);

  int Count() const { return static_cast<int>(m_types.size()); }
  const unsigned* Types() const { return m_types.data(); }
  const char* const* Pointers() const { return m_pointers.data(); }
  const int* Lengths() const { return m_lengths.data(); }
  const int* Formats() const { return m_formats.data(); }
  /// Which types the values have; a statement is prepared for those.
  const QByteArray& Signature() const { return m_signature; }

 private:
  void AddNumber(char letter, unsigned type, QByteArray digits);
  void AddText(std::string_view text, ParameterKind kind);

  std::vector<unsigned> m_types;
  std::vector<const char*> m_pointers;
  std::vector<int> m_lengths;
  std::vector<int> m_formats;
  std::vector<QByteArray> m_own;
  QByteArray m_signature;
};

/// The bytes of a text for the server, and the text of its bytes; see above.
QByteArray BytesForServer(std::string_view text);
QString TextFromServer(std::string_view bytes);

}  // namespace database
