#pragma once

#include "host/records/Attention.h"
#include "host/records/DatabaseThread.h"
#include "host/records/NodeCatalog.h"

#include <QHash>
#include <QScrollArea>
#include <QTimer>

#include <functional>
#include <optional>
#include <vector>

class QLabel;
class QVBoxLayout;

namespace host {

/// What everything begins with: the first steps until they are done, the records that were written last, and what
/// somebody should look at, each with a button that leads there. It is read in the background, and only while it is
/// seen.
class HomePage : public QScrollArea {
  Q_OBJECT

 public:
  struct Texts {
    QString user;
    QString database;      ///< As the user knows it.
    QString databaseFile;  ///< Empty on a server.
    bool readOnly = false;
    bool administrator = false;
  };

  /// Borrows thread and nodes.
  HomePage(DatabaseThread& thread, const std::vector<Node>& nodes, Texts texts, QWidget* parent = nullptr);

  /// How many records the nodes have, by their numbers; of a node that is not in it nothing is new.
  void SetCounts(const QHash<int, int>& counts);
  /// The session is another one now, or may do less.
  void SetTexts(Texts texts);
  /// The copies can be made from here: `makeCopy` is called by the buttons for that.
  void OfferCopies(std::function<void()> makeCopy);
  /// Something was written.
  void Refresh();

 Q_SIGNALS:
  /// These records are to be seen.
  void RecordsWanted(int nodeId, const QList<int>& ids);
  /// A record is to be added to that node.
  void AdditionWanted(int nodeId);
  void RecoveryWanted(int nodeId, int id);
  /// The records in use are to be seen.
  void LocksWanted();

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// A line with its way out, if it has one.
  struct Line {
    QString text;
    QString way = {};  ///< Of the button.
    std::function<void()> act = {};
  };
  struct Section {
    QWidget* box;
    QVBoxLayout* lines;
    QStringList shown;  ///< What the lines say.
  };
  struct Contents {
    QString office;
    QList<Change> written;
    QList<Concern> concerns;
    int oldLocks = 0;
    std::optional<QDateTime> copy;
  };

  Section MakeSection(const QString& name, const QString& title, QVBoxLayout& layout);
  void Fill(Section& section, const QList<Line>& lines);
  void DressTitles();
  void Read();
  void Take(const Contents& contents);
  void ShowSteps();
  QList<Line> StepLines();
  QList<Line> WrittenLines(const QList<Change>& written);
  QList<Line> ConcernLines(const Contents& contents);

  const std::vector<Node>& m_nodes;
  Texts m_texts;
  QLabel* m_greeting;
  QLabel* m_office;
  Section m_steps;
  Section m_written;
  Section m_concerns;
  QLabel* m_nothing;  ///< Says so where there is nothing else.
  QHash<int, int> m_counts;
  Contents m_contents;
  bool m_hasContents = false;
  std::function<void()> m_makeCopy;
  QTimer m_soon;
  Reading<Contents> m_reading;
};

}  // namespace host
