#include "host_mailing/Anchors.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QStringList>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const char* const sheet = R"(<?xml version="1.0"?>
<Glabels-document xmlns="http://glabels.org/xmlns/3.0/">
  <Template brand="Kel" part="A4" size="A4" description="24">
    <Label-rectangle id="0" width="70mm" height="37mm" round="0mm" x_waste="0mm" y_waste="0mm">
      <Layout nx="3" ny="8" x0="0mm" y0="0mm" dx="70mm" dy="37mm"/>
    </Label-rectangle>
  </Template>
  <Objects id="0" rotate="False">
    <Object-text x="5mm" y="5mm" w="62mm" h="27mm" justify="left" valign="vcenter" auto_shrink="False"
                 a0="1" a1="0" a2="0" a3="1" a4="0" a5="0" shadow="False" shadow_x="0pt" shadow_y="0pt">
      <Span font_family="Liberation Sans" font_size="10" font_weight="Regular" font_italic="False" color="0xff"
            line_spacing="1"><Field name="Nombre y apellidos"/><NL/><Field name="Direccion"/><NL/><Field
            name="CP"/> <Field name="Poblacion"/></Span>
    </Object-text>
  </Objects>
  <Merge type="Text/Comma/Line1Keys" src="people.csv"/>
  <Data/>
</Glabels-document>
)";

void Write(const QString& path, const QByteArray& content) {
  QFile file(path);
  if (!file.open(QFile::WriteOnly) || file.write(content) != content.size()) {
    std::fprintf(stderr, "%s can't be written\n", qPrintable(path));
    std::exit(1);
  }
}

QByteArray People(int count) {
  QByteArray people = "Tratamiento,Nombre y apellidos,Direccion,CP,Poblacion,Provincia,Pais,Encabezado,NIF\n";
  for (int i = 0; i < count; ++i) {
    const QByteArray number = QByteArray::number(i);
    people += "D.ª,Adela Abadía Número " + number + ",\"Calle Mayor, " + number +
              "\",28801,Alcalá de Henares,Madrid,,Estimada amiga:,99" + number + '\n';
  }
  return people;
}

bool IsInstalled(const char* program) {
  const bool found = !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
  if (!found) {
    std::printf("%s is not installed: nothing to compare with\n", program);
  }
  return found;
}

}  // namespace

Cost CostOf(const QStringList& command) {
  std::vector<QByteArray> words;
  for (const QString& word : command) {
    words.push_back(word.toLocal8Bit());
  }
  std::vector<char*> arguments;
  for (QByteArray& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    execvp(arguments.front(), arguments.data());
    _exit(1);
  }
  int status = 0;
  rusage usage = {};
  wait4(child, &status, 0, &usage);
  if (status != 0) {
    std::fprintf(stderr, "failed: %s\n", qPrintable(command.join(u' ')));
    std::exit(1);
  }
  const auto seconds = [](timeval time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
  constexpr double kilobytes = 1024;
  return {.seconds = seconds(usage.ru_utime) + seconds(usage.ru_stime),
          .megabytes = double(usage.ru_maxrss) / kilobytes};
}

std::optional<Cost> LabelsElsewhere(const QString& folder, int people) {
  if (!IsInstalled("glabels-3-batch")) {
    return {};
  }
  const QString labels = folder + u"/sheet.glabels"_s;
  const QString data = folder + u"/people.csv"_s;
  Write(labels, QByteArray(sheet).replace("people.csv", data.toUtf8()));
  Write(data, People(people));
  return CostOf({u"glabels-3-batch"_s, u"-i"_s, data, u"-o"_s, folder + u"/labels.pdf"_s, labels});
}

std::optional<Cost> LettersElsewhere(const QString& folder, const QByteArray& letter, int people) {
  if (!IsInstalled("soffice")) {
    return {};
  }
  const QDir office(folder + u"/office"_s);
  office.mkpath(u"out"_s);
  Write(office.filePath(u"letter.rtf"_s), letter);
  Write(office.filePath(u"people.csv"_s), People(people));
  return CostOf(
      {QStringLiteral(KEL_OFFICE_MERGE), office.filePath(u"letter.rtf"_s), office.path(), office.filePath(u"out"_s)});
}

}  // namespace bench
