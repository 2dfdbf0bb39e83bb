#include "reader/DesktopReader.h"

#include "reader/DesktopCell.h"
#include "reader/Libmdb.h"

#include <array>

namespace reader {

namespace {

constexpr int isDeleted = 0x4000;
constexpr int offsetMask = 0x1FFF;

class DesktopTable {
 public:
  DesktopTable(MdbHandle& file, TableDef table, FrameWriter& frames)
      : m_file(&file), m_table(std::move(table)), m_frames(&frames) {}

  void Read() {
    QList<FrameWriter::Column> columns;
    for (unsigned i = 0; i < m_table->num_cols; ++i) {
      columns.append({Column(i).name, KindOf(Column(i))});
    }
    m_frames->Table(m_table->entry->object_name, m_table->num_rows, columns);
    mdb_rewind_table(m_table.get());
    while (mdb_read_next_dpg(m_table.get()) != 0) {
      ReadPage();
    }
    m_frames->EndTable();
  }

 private:
  MdbColumn& Column(unsigned i) const { return *static_cast<MdbColumn*>(g_ptr_array_index(m_table->columns, i)); }

  void ReadPage() {
    const int rows = mdb_get_int16(m_file->pg_buf, m_file->fmt->row_count_offset);
    for (int row = 0; row < rows && m_file->fmt->row_count_offset + 2 * (row + 1) < m_file->fmt->pg_size; ++row) {
      int start = 0;
      size_t size = 0;
      const bool isThere = mdb_find_row(m_file, row, &start, &size) == 0 && size > 0;
      if (isThere && (start & isDeleted) == 0) {
        ReadRow(start & offsetMask, size);
      }
    }
  }

  // A row that can't be taken apart is not written, and so missing in the count.
  void ReadRow(int start, size_t size) {
    std::array<MdbField, MDB_MAX_COLS> fields = {};
    if (mdb_crack_row(m_table.get(), start, size, fields.data()) < 0) {
      return;
    }
    for (unsigned i = 0; i < m_table->num_cols; ++i) {
      const CellValue cell = ReadCell(*m_file, Column(i), fields[i]);
      m_frames->AddCell(cell.kind, cell.value);
    }
    m_frames->EndRow();
  }

  MdbHandle* m_file;
  TableDef m_table;
  FrameWriter* m_frames;
};

void ReadTable(MdbHandle& file, MdbCatalogEntry& entry, FrameWriter& frames) {
  TableDef table(mdb_read_table(&entry));
  const bool isGood = table && table->num_cols > 0 && table->num_cols <= unsigned(mostColumns) &&
                      mdb_read_columns(table.get()) != nullptr && table->columns->len == table->num_cols;
  if (isGood) {
    DesktopTable(file, std::move(table), frames).Read();
  } else {
    frames.Named(Frame::Unreadable, entry.object_name);
  }
}

bool IsOfTheProgram(const MdbCatalogEntry& entry) {
  return qstrnicmp(entry.object_name, "MSys", 4) == 0 || entry.object_name[0] == '~';
}

}  // namespace

bool ReadDesktopFile(const MappedFile& file, FrameWriter& frames) {
  MdbHandle* const handle = mdb_open_buffer(file.bytes, file.size, MDB_NOFLAGS);
  if (handle == nullptr) {
    return false;
  }
  const bool isNewer = handle->f->jet_version >= MDB_VER_ACCDB_2007;
  frames.File(isNewer ? "accdb" : "mdb");
  const GPtrArray* const catalog = mdb_read_catalog(handle, MDB_ANY);
  if (catalog == nullptr || catalog->len == 0) {
    // An encrypted file of the newer kind is one whose pages are nothing.
    if (isNewer) {
      frames.Plain(Frame::Protected);
    }
    return false;
  }
  for (unsigned i = 0; i < catalog->len; ++i) {
    auto& entry = *static_cast<MdbCatalogEntry*>(g_ptr_array_index(catalog, i));
    if (entry.object_type == MDB_LINKED_TABLE) {
      frames.Named(Frame::Linked, entry.object_name);
    } else if (mdb_is_user_table(&entry) != 0 && !IsOfTheProgram(entry)) {
      ReadTable(*handle, entry, frames);
    }
  }
  return true;
}

}  // namespace reader
