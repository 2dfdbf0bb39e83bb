#pragma once

#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QTextFormat>

#include <memory>

/// What Qt's formats do not have is kept in user properties of them, so that undo and redo, cut and paste of the
/// document's own fragments and clones keep it. Whatever is long stands behind a pointer (Piece) with a short text
/// beside it that differs where the contents do: Qt finds equal formats by a hash in which only numbers and texts
/// count.
namespace rtf {

enum Property : int {
  // Character formats.
  FontProperty = QTextFormat::UserProperty + 0x4B00,  ///< QString: Font::Description
  CharacterWordsProperty,                             ///< QString: carried words
  UnderlineProperty,                                  ///< int: UnderlineKind where Qt shows another one
  BackgroundProperty,                                 ///< int: BackgroundKind and the colour, (kind << 24) | colour
  RaiseProperty,                                      ///< int: `\up` (positive) or `\dn` half-points
  StrikeProperty,                                     ///< int: lines, where more than one
  SmallCapsProperty,                                  ///< bool: small capitals under capitals
  RunDirectionProperty,                               ///< int: 1 for `\rtlch`
  PieceNameProperty,                                  ///< QString: names the contents of PieceProperty
  PieceProperty,                                      ///< Piece: what the object character stands for
  LinkNameProperty,  ///< QString: numbers and contents of the fields and objects that this text is the result of
  LinkProperty,      ///< Links
  // Formats of tables' cells, which are those of their first paragraph's mark, too. Text that is typed there gets them.
  RowDefinitionProperty,   ///< QString: the words of the cell's row, from `\trowd`
  CellNumberProperty,      ///< int: which of the definition's cells it is
  ShadingProperty,         ///< int: the cell's colour, over the mark's own background
  MarkAlignmentProperty,   ///< int: the mark's own vertical alignment, where the cell has one
  EmptyCellsNameProperty,  ///< QString: names the contents of EmptyCellsProperty
  EmptyCellsProperty,      ///< EmptyCells: the cells that are part of this one
  // Block formats.
  TabsProperty,              ///< QString: the tab words, as the paragraph's edge counts them
  ParagraphWordsProperty,    ///< QString: carried words
  FirstIndentProperty,       ///< int: `\fi` of a list item, whose marker hangs by itself here
  TableProperty,             ///< QString: the places of a TablePath, of rows that no table can hold
  TableDefinitionsProperty,  ///< QStringList: the definitions of its rows
  BreakProperty,             ///< int: BreakKind
  SectionWordsProperty,      ///< QString: the words of the section that begins with this paragraph
  SectionNameProperty,       ///< QString: names the contents of SectionProperty
  SectionProperty,           ///< Piece: the section's headers and footers
  // List formats.
  ListSourceProperty,  ///< QString: `\lsN\ilvlN`, or the `\pn` group
  ListStyleProperty,   ///< int: the style that ListSourceProperty stands for
  ListStartProperty,   ///< int: number of the first item where it is not 1
  ListPartProperty,    ///< int: which part of a list that is too long for one
  // The root frame's format.
  PreambleProperty,  ///< Preamble
};

/// The object type of pieces that show nothing.
inline constexpr int pieceObjectType = QTextFormat::UserObject + 0x4B;

/// Bytes that are kept as they are, shared by all who refer to them.
class Piece {
 public:
  Piece() = default;
  explicit Piece(QByteArray bytes) : m_bytes(std::make_shared<const QByteArray>(std::move(bytes))) {}

  bool IsNull() const { return m_bytes == nullptr; }
  QByteArray Bytes() const { return m_bytes == nullptr ? QByteArray() : *m_bytes; }
  /// A text that differs where the contents do.
  QString Name() const;

  bool operator==(const Piece& other) const { return m_bytes == other.m_bytes || Bytes() == other.Bytes(); }

 private:
  std::shared_ptr<const QByteArray> m_bytes;
};

/// The fields and objects around a text, outermost first. A piece is the group up to its result:
/// "\field{\*\fldinst..}".
struct Link {
  int serial = 0;  ///< Tells neighbours with equal contents apart.
  bool isObject = false;
  Piece head;
  QString target;  ///< The address of a hyperlink.

  bool operator==(const Link&) const = default;
};
using Links = QList<Link>;
/// Fields and objects within the results of others, beyond which they are pieces as a whole.
inline constexpr int deepestLink = 8;

/// Why a paragraph begins a page.
enum class BreakKind {
  AtStart = 1,  ///< `\page` as its first character
  Within,       ///< `\page` in the middle of a paragraph, which goes on here
  Property,     ///< `\pagebb`
  Section,      ///< its section
};

}  // namespace rtf

Q_DECLARE_METATYPE(rtf::Piece)
Q_DECLARE_METATYPE(rtf::Links)
