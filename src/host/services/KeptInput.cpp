#include "host/services/KeptInput.h"

#include "platform/process/PrivateFiles.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int version = 1;
constexpr qint64 longestFile = 4'000'000;

QJsonObject ToJson(const ControlValue& value) {
  return {{u"control"_s, value.control},
          {u"rotulo"_s, value.label},
          {u"valor"_s, QJsonValue::fromVariant(value.value)},
          {u"texto"_s, value.shown}};
}

ControlValue ValueFrom(const QJsonObject& object) {
  return {object[u"control"_s].toString(), object[u"rotulo"_s].toString(), object[u"valor"_s].toVariant(),
          object[u"texto"_s].toString()};
}

QJsonObject ToJson(const ComponentRequest& request) {
  return {{u"nodo"_s, request.node},
          {u"accion"_s, request.action},
          {u"id"_s, request.selectedId},
          {u"aux"_s, request.aux.toInt()}};
}

// It stands for user and database, in the file, too: one that was copied to another name is not taken for that one's.
QString OwnName(const QString& file) {
  return QFileInfo(file).completeBaseName();
}

// Whether nothing of it is lost.
bool ReadInputs(const QByteArray& content, const QString& name, QList<KeptInput>& inputs) {
  const QJsonObject document = QJsonDocument::fromJson(content).object();
  if (document[u"version"_s].toInt() != version || document[u"de"_s].toString(name) != name) {
    return false;
  }
  const QJsonArray entries = document[u"cuadros"_s].toArray();
  for (const QJsonValue& entry : entries) {
    if (const std::optional<KeptInput> input = KeptInputFrom(entry.toObject())) {
      inputs.append(*input);
    }
  }
  return inputs.size() == entries.size();
}

QString PutAside(const QString& file) {
  const QString aside = file + QDateTime::currentDateTime().toString(u"'.antes-'yyyy-MM-dd-HHmmss"_s);
  return QFile::rename(file, aside) ? aside : file;
}

}  // namespace

QString KeptInput::Text() const {
  QStringList lines{title};
  for (const ControlValue& value : values) {
    lines.append(u"%1: %2"_s.arg(value.label, value.shown));
  }
  return (lines + rows).join(u'\n');
}

QJsonObject ToJson(const KeptInput& input) {
  QJsonArray values;
  for (const ControlValue& value : input.values) {
    values.append(ToJson(value));
  }
  QJsonObject object{{u"cuadro"_s, input.dialog},
                     {u"titulo"_s, input.title},
                     {u"momento"_s, input.moment.toUTC().toString(Qt::ISODate)},
                     {u"motivo"_s, input.reason},
                     {u"foco"_s, input.focus},
                     {u"valores"_s, values},
                     {u"filas"_s, QJsonArray::fromStringList(input.rows)}};
  if (input.request) {
    object[u"peticion"_s] = ToJson(*input.request);
  }
  return object;
}

std::optional<KeptInput> KeptInputFrom(const QJsonObject& object) {
  KeptInput input;
  input.dialog = object[u"cuadro"_s].toString();
  input.title = object[u"titulo"_s].toString();
  input.moment = QDateTime::fromString(object[u"momento"_s].toString(), Qt::ISODate);
  input.reason = object[u"motivo"_s].toString();
  input.focus = object[u"foco"_s].toString();
  const QJsonArray values = object[u"valores"_s].toArray();
  for (const QJsonValue& value : values) {
    input.values.append(ValueFrom(value.toObject()));
  }
  const QJsonArray rows = object[u"filas"_s].toArray();
  for (const QJsonValue& row : rows) {
    input.rows.append(row.toString());
  }
  if (object.contains(u"peticion"_s)) {
    const QJsonObject request = object[u"peticion"_s].toObject();
    input.request = {.node = request[u"nodo"_s].toInt(-1),
                     .action = request[u"accion"_s].toInt(),
                     .selectedId = request[u"id"_s].toInt(),
                     .aux = request[u"aux"_s].toInt()};
  }
  const bool isOne = !input.dialog.isEmpty() && input.moment.isValid() && (!values.isEmpty() || !rows.isEmpty());
  return isOne ? std::optional(input) : std::nullopt;
}

bool WriteKeptInputs(const QString& file, const QList<KeptInput>& inputs) {
  if (inputs.isEmpty()) {
    return true;
  }
  const QList<KeptInput> all = inputs + TakeKeptInputs(file).inputs;
  QJsonArray entries;
  for (const KeptInput& input : all) {
    entries.append(ToJson(input));
  }
  const QByteArray content =
      QJsonDocument(QJsonObject{{u"version"_s, version}, {u"de"_s, OwnName(file)}, {u"cuadros"_s, entries}})
          .toJson(QJsonDocument::Compact);
  // A file that is saved anew keeps its mode, so it is made before.
  if (!process::TakePrivateFile(file)) {
    return false;
  }
  QSaveFile saved(file);
  return saved.open(QIODevice::WriteOnly) && saved.write(content) == content.size() && saved.commit();
}

TakenInputs TakeKeptInputs(const QString& file) {
  TakenInputs taken;
  QFile kept(file);
  if (!kept.exists()) {
    return taken;
  }
  if (!process::TakePrivateFile(file) || !kept.open(QIODevice::ReadOnly)) {
    taken.unread = file;
    return taken;
  }
  const QByteArray content = kept.size() <= longestFile ? kept.readAll() : QByteArray();
  kept.close();
  if (ReadInputs(content, OwnName(file), taken.inputs)) {
    kept.remove();
  } else {
    taken.unread = PutAside(file);
  }
  return taken;
}

QString KeptInputFile(const QString& database, int userId) {
  const QByteArray name = QCryptographicHash::hash(database.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
  return u"%1/Kel/sin-guardar/%2-%3.json"_s.arg(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
                                                QString::fromLatin1(name), QString::number(userId));
}

}  // namespace host
