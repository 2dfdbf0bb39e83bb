#include "platform/automation/Invoke.h"

#include "platform/automation/Conversion.h"
#include "platform/automation/Error.h"

#include <QHash>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QVarLengthArray>

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <vector>

using namespace Qt::StringLiterals;

namespace automation {

namespace {

struct Parameter {
  QMetaType type;
  bool byReference = false;
};

struct Overload {
  int index = 0;
  QMetaType returnType;
  std::vector<Parameter> parameters;
};

using Overloads = std::vector<Overload>;

struct Member {
  QMetaProperty property;
  Overloads overloads;
};

// Members of a class by their name in lower case. Names of members are ASCII or UTF-8; `ñ` and accents fold too.
using Members = std::unordered_map<std::string, Member>;

std::string Folded(QByteArrayView name) {
  std::string folded(name.begin(), name.end());
  bool ascii = true;
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
    ascii = ascii && static_cast<unsigned char>(c) < 0x80;
  }
  return ascii ? folded : QString::fromStdString(folded).toLower().toStdString();
}

Overload Describe(const QMetaMethod& method) {
  Overload overload;
  overload.index = method.methodIndex();
  overload.returnType = method.returnMetaType();
  const QList<QByteArray> names = method.parameterTypes();
  for (int i = 0; i < method.parameterCount(); ++i) {
    Parameter parameter;
    QByteArray name = names[i];
    parameter.byReference = name.endsWith('&');
    if (parameter.byReference) {
      name.chop(1);
    }
    parameter.type = parameter.byReference ? QMetaType::fromName(name) : method.parameterMetaType(i);
    if (!parameter.type.isValid()) {
      parameter.type = method.parameterMetaType(i);
    }
    overload.parameters.push_back(parameter);
  }
  return overload;
}

Members Describe(const QMetaObject* metaObject) {
  Members members;
  for (int i = 0; i < metaObject->propertyCount(); ++i) {
    const QMetaProperty property = metaObject->property(i);
    members[Folded(property.name())].property = property;
  }
  // From the most derived class up, so that its methods hide those of the same arguments above.
  for (int i = metaObject->methodCount() - 1; i >= 0; --i) {
    const QMetaMethod method = metaObject->method(i);
    if (method.methodType() == QMetaMethod::Method || method.methodType() == QMetaMethod::Slot) {
      members[Folded(method.name())].overloads.push_back(Describe(method));
    }
  }
  return members;
}

const Members& MembersOf(const QMetaObject* metaObject) {
  static std::unordered_map<const QMetaObject*, std::unique_ptr<const Members>> known;
  std::unique_ptr<const Members>& members = known[metaObject];
  if (!members) {
    members = std::make_unique<const Members>(Describe(metaObject));
  }
  return *members;
}

const Member* Find(const QObject* object, QByteArrayView name) {
  if (object == nullptr) {
    throw Error(ObjectNotSet);
  }
  const Members& members = MembersOf(object->metaObject());
  const auto found = members.find(Folded(name));
  return found == members.end() ? nullptr : &found->second;
}

// A class's own name: which namespace it stands in is no affair of who calls it.
QString ClassName(const QObject* object) {
  return QString::fromUtf8(object->metaObject()->className()).section(u"::"_s, -1);
}

[[noreturn]] void RaiseNoSuchMember(const QObject* object, QByteArrayView name) {
  throw Error(NoSuchMember, u"%1 (%2.%3)"_s.arg(ErrorText(NoSuchMember), ClassName(object), QString::fromUtf8(name)));
}

const Overload& Choose(const Overloads& overloads, std::size_t argumentCount) {
  bool tooFew = false;
  for (const Overload& overload : overloads) {
    if (overload.parameters.size() == argumentCount) {
      return overload;
    }
    tooFew = tooFew || overload.parameters.size() > argumentCount;
  }
  throw Error(tooFew ? ArgumentNotOptional : WrongNumberOfArguments);
}

QVariant Invoke(QObject* object, const Overloads& overloads, std::span<Argument> arguments) {
  const Overload& overload = Choose(overloads, arguments.size());
  QVariant result;
  QVarLengthArray<void*, 12> slots;
  void* resultStorage = nullptr;
  if (overload.returnType.id() == QMetaType::QVariant) {
    resultStorage = &result;
  } else if (overload.returnType.id() != QMetaType::Void && overload.returnType.isValid()) {
    result = QVariant(overload.returnType);
    resultStorage = result.data();
  }
  slots.append(resultStorage);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    QVariant& value = arguments[i].Value();
    if (overload.parameters[i].type.id() == QMetaType::QVariant) {
      slots.append(&value);
    } else {
      ConvertTo(value, overload.parameters[i].type);
      slots.append(value.data());
    }
  }
  object->qt_metacall(QMetaObject::InvokeMetaMethod, overload.index, slots.data());
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (overload.parameters[i].byReference) {
      arguments[i].WriteBack();
    }
  }
  return result;
}

}  // namespace

Method::Method(const QObject* object, QByteArrayView name) {
  const Member* member = Find(object, name);
  if (member == nullptr || member->overloads.empty()) {
    RaiseNoSuchMember(object, name);
  }
  m_overloads = &member->overloads;
}

QVariant Method::Call(QObject* object, std::span<Argument> arguments) const {
  if (object == nullptr) {
    throw Error(ObjectNotSet);
  }
  return Invoke(object, *static_cast<const Overloads*>(m_overloads), arguments);
}

QVariant Get(QObject* object, QByteArrayView name) {
  const Member* member = Find(object, name);
  if (member == nullptr) {
    RaiseNoSuchMember(object, name);
  }
  if (member->property.isValid() && member->property.isReadable()) {
    return member->property.read(object);
  }
  if (!member->overloads.empty()) {
    return Invoke(object, member->overloads, {});
  }
  RaiseNoSuchMember(object, name);
}

void Put(QObject* object, QByteArrayView name, const QVariant& value) {
  const Member* member = Find(object, name);
  if (member == nullptr) {
    RaiseNoSuchMember(object, name);
  }
  if (!member->property.isValid() || !member->property.isWritable()) {
    throw Error(WrongNumberOfArguments);
  }
  QVariant converted = value;
  if (member->property.metaType().id() != QMetaType::QVariant) {
    ConvertTo(converted, member->property.metaType());
  }
  if (!member->property.write(object, converted)) {
    throw Error(TypeMismatch);
  }
}

QVariant CallWith(QObject* object, QByteArrayView name, std::span<Argument> arguments) {
  const Member* member = Find(object, name);
  if (member == nullptr) {
    RaiseNoSuchMember(object, name);
  }
  if (!member->overloads.empty()) {
    return Invoke(object, member->overloads, arguments);
  }
  if (!arguments.empty()) {
    throw Error(WrongNumberOfArguments);
  }
  return Get(object, name);
}

}  // namespace automation
