#include "opc_nodes.h"

#include <cstring>
#include <string>
#include <vector>

namespace sim {

namespace {

constexpr UA_Byte kRead = UA_ACCESSLEVELMASK_READ;
constexpr UA_Byte kWrite = UA_ACCESSLEVELMASK_WRITE;

UA_String View(const std::string& text) {
  UA_String view;
  view.length = text.size();
  view.data = reinterpret_cast<UA_Byte*>(const_cast<char*>(text.data()));
  return view;
}

UA_NodeId IdOf(const std::string& id) {
  UA_NodeId node;
  UA_NodeId_init(&node);
  node.namespaceIndex = 1;
  node.identifierType = UA_NODEIDTYPE_STRING;
  node.identifier.string = View(id);
  return node;
}

UA_QualifiedName NameOf(const std::string& name) {
  UA_QualifiedName qualified;
  qualified.namespaceIndex = 1;
  qualified.name = View(name);
  return qualified;
}

UA_LocalizedText TextOf(const std::string& text) {
  UA_LocalizedText localized;
  UA_LocalizedText_init(&localized);
  localized.text = View(text);
  return localized;
}

class Plant {
 public:
  explicit Plant(UA_Server* server) : server_(server) {}

  void Folder(const std::string& name, const UA_NodeId& parent) {
    UA_ObjectAttributes attributes = UA_ObjectAttributes_default;
    attributes.displayName = TextOf(name);
    UA_Server_addObjectNode(server_, IdOf(name), parent, UA_NODEID_NUMERIC(0, UA_NS0ID_ORGANIZES), NameOf(name),
                            UA_NODEID_NUMERIC(0, UA_NS0ID_FOLDERTYPE), attributes, nullptr, nullptr);
  }

  void Variable(const std::string& folder, const std::string& name, int type, const void* value, UA_Byte access = kRead,
                std::size_t elements = 0) {
    Node(folder, name, folder + "." + name, type, value, access, elements);
  }

  /// A variable whose identifier says nothing of where it stands.
  void Node(const std::string& folder, const std::string& name, const std::string& id, int type, const void* value,
            UA_Byte access = kRead, std::size_t elements = 0) {
    UA_VariableAttributes attributes = UA_VariableAttributes_default;
    attributes.displayName = TextOf(name);
    attributes.dataType = UA_TYPES[type].typeId;
    attributes.accessLevel = access;
    attributes.userAccessLevel = access;
    UA_UInt32 dimension = static_cast<UA_UInt32>(elements);
    if (elements == 0) {
      UA_Variant_setScalar(&attributes.value, const_cast<void*>(value), &UA_TYPES[type]);
    } else {
      UA_Variant_setArray(&attributes.value, const_cast<void*>(value), elements, &UA_TYPES[type]);
      attributes.valueRank = UA_VALUERANK_ONE_DIMENSION;
      attributes.arrayDimensions = &dimension;
      attributes.arrayDimensionsSize = 1;
    }
    UA_Server_addVariableNode(server_, IdOf(id), IdOf(folder), UA_NODEID_NUMERIC(0, UA_NS0ID_HASCOMPONENT),
                              NameOf(name), UA_NODEID_NUMERIC(0, UA_NS0ID_BASEDATAVARIABLETYPE), attributes, nullptr,
                              nullptr);
  }

  /// The engineering range of a variable, which a deadband is a share of.
  void Range(const std::string& variable, double low, double high) {
    UA_Range range;
    range.low = low;
    range.high = high;
    UA_VariableAttributes attributes = UA_VariableAttributes_default;
    const std::string property = "EURange";
    attributes.displayName = TextOf(property);
    attributes.dataType = UA_TYPES[UA_TYPES_RANGE].typeId;
    UA_Variant_setScalar(&attributes.value, &range, &UA_TYPES[UA_TYPES_RANGE]);
    UA_QualifiedName name = NameOf(property);
    name.namespaceIndex = 0;
    UA_Server_addVariableNode(server_, UA_NODEID_NUMERIC(1, 0), IdOf(variable),
                              UA_NODEID_NUMERIC(0, UA_NS0ID_HASPROPERTY), name,
                              UA_NODEID_NUMERIC(0, UA_NS0ID_PROPERTYTYPE), attributes, nullptr, nullptr);
  }

  void Status(const std::string& variable, UA_StatusCode status) {
    UA_DataValue value;
    UA_DataValue_init(&value);
    UA_Double number = 7;
    UA_Variant_setScalar(&value.value, &number, &UA_TYPES[UA_TYPES_DOUBLE]);
    value.hasValue = true;
    value.status = status;
    value.hasStatus = true;
    UA_Server_writeDataValue(server_, IdOf(variable), value);
  }

 private:
  UA_Server* server_;
};

void AddPump(Plant& plant) {
  plant.Folder("Pump", IdOf("Plant"));
  const UA_Float rate = 40;
  plant.Variable("Pump", "Rate", UA_TYPES_FLOAT, &rate, kRead | kWrite);
  plant.Range("Pump.Rate", 0, 200);
  const UA_Double depth = 0;
  plant.Variable("Pump", "Depth", UA_TYPES_DOUBLE, &depth);
  const std::string name = "Насос 1";
  const UA_String text = View(name);
  plant.Variable("Pump", "Name", UA_TYPES_STRING, &text, kRead | kWrite);
  const UA_Boolean running = true;
  plant.Variable("Pump", "Running", UA_TYPES_BOOLEAN, &running, kRead | kWrite);
  const UA_UInt32 count = 0;
  plant.Variable("Pump", "Count", UA_TYPES_UINT32, &count);
  const UA_Byte mode = 3;
  plant.Variable("Pump", "Mode", UA_TYPES_BYTE, &mode);
  plant.Variable("Pump", "Secret", UA_TYPES_DOUBLE, &depth, kWrite);
  const UA_Double motor = 75;
  plant.Variable("Pump", "Motor", UA_TYPES_DOUBLE, &motor);
  plant.Variable("Pump.Motor", "Current", UA_TYPES_DOUBLE, &depth);
  plant.Variable("Pump.Motor", "Speed", UA_TYPES_DOUBLE, &depth);
}

void AddTypes(Plant& plant) {
  plant.Folder("Types", IdOf("Plant"));
  const UA_SByte small = -5;
  const UA_Int16 shortNumber = -300;
  const UA_UInt16 word = 60000;
  const UA_Int32 longNumber = -70000;
  const UA_Int64 huge = -5000000000;
  const UA_UInt64 hugest = 5000000000;
  // 14 March 2026, 12:00:00 UTC
  const UA_DateTime moment = UA_DATETIME_UNIX_EPOCH + 1773489600LL * UA_DATETIME_SEC;
  plant.Variable("Types", "SByte", UA_TYPES_SBYTE, &small, kRead | kWrite);
  plant.Variable("Types", "Int16", UA_TYPES_INT16, &shortNumber, kRead | kWrite);
  plant.Variable("Types", "UInt16", UA_TYPES_UINT16, &word, kRead | kWrite);
  plant.Variable("Types", "Int32", UA_TYPES_INT32, &longNumber, kRead | kWrite);
  plant.Variable("Types", "Int64", UA_TYPES_INT64, &huge, kRead | kWrite);
  plant.Variable("Types", "UInt64", UA_TYPES_UINT64, &hugest, kRead | kWrite);
  plant.Variable("Types", "DateTime", UA_TYPES_DATETIME, &moment, kRead | kWrite);
}

void AddArrays(Plant& plant) {
  plant.Folder("Arrays", IdOf("Plant"));
  const UA_Double levels[] = {1.5, 2.5, -3};
  plant.Variable("Arrays", "Levels", UA_TYPES_DOUBLE, levels, kRead | kWrite, 3);
  const std::string first = "north";
  const std::string second = "south";
  const UA_String names[] = {View(first), View(second)};
  plant.Variable("Arrays", "Names", UA_TYPES_STRING, names, kRead, 2);
}

void AddQuality(Plant& plant) {
  plant.Folder("Quality", IdOf("Plant"));
  const UA_Double number = 7;
  plant.Variable("Quality", "Bad", UA_TYPES_DOUBLE, &number);
  plant.Status("Quality.Bad", UA_STATUSCODE_BADSENSORFAILURE);
  plant.Variable("Quality", "Uncertain", UA_TYPES_DOUBLE, &number);
  plant.Status("Quality.Uncertain", UA_STATUSCODE_UNCERTAINLASTUSABLEVALUE);
  UA_Range range;
  range.low = 0;
  range.high = 1;
  plant.Variable("Quality", "Structure", UA_TYPES_RANGE, &range);
  const std::string word = "word";
  const UA_String text = View(word);
  plant.Variable("Quality", "Odd", UA_TYPES_STRING, &text);
  plant.Range("Quality.Odd", 0, 1);
}

void AddLarge(Plant& plant) {
  plant.Folder("Large", IdOf("Plant"));
  // An odd letter first, so that no power of two is the end of a letter of two bytes.
  std::string letters = "x";
  for (int i = 0; i < 100'000; ++i) letters += "ж";
  const UA_String text = View(letters);
  plant.Variable("Large", "Text", UA_TYPES_STRING, &text);
  const std::vector<UA_Double> numbers(150'000, 1.5);
  plant.Variable("Large", "Array", UA_TYPES_DOUBLE, numbers.data(), kRead, numbers.size());
  plant.Variable("Large", "Long", UA_TYPES_DOUBLE, numbers.data(), kRead, 20'000);
}

}  // namespace

void AddPlant(UA_Server* server, int many) {
  Plant plant(server);
  plant.Folder("Plant", UA_NODEID_NUMERIC(0, UA_NS0ID_OBJECTSFOLDER));
  AddPump(plant);
  AddTypes(plant);
  AddArrays(plant);
  AddQuality(plant);
  AddLarge(plant);
  plant.Folder("Changing", IdOf("Plant"));
  plant.Folder("Many", IdOf("Plant"));
  for (int i = 0; i < many; ++i) {
    const UA_Double number = i;
    plant.Variable("Many", "V" + std::to_string(i), UA_TYPES_DOUBLE, &number);
  }
}

std::uint32_t MovePlant(UA_Server* server, int moving) {
  static UA_UInt32 count = 0;
  ++count;
  UA_Variant value;
  UA_Double number = 0.5 * count;
  UA_Variant_setScalar(&value, &number, &UA_TYPES[UA_TYPES_DOUBLE]);
  UA_Server_writeValue(server, IdOf("Pump.Depth"), value);
  for (int i = 0; i < moving; ++i) {
    number = 10000.0 * i + count;
    UA_Server_writeValue(server, IdOf("Many.V" + std::to_string(i)), value);
  }
  UA_Variant_setScalar(&value, &count, &UA_TYPES[UA_TYPES_UINT32]);
  UA_Server_writeValue(server, IdOf("Pump.Count"), value);
  return count;
}

void ChangePlant(UA_Server* server) {
  static int levels = 0;
  static bool isThere = false;
  isThere = !isThere;
  if (isThere) ++levels;
  const std::string id = "Changing.Level." + std::to_string(levels);
  const UA_Double value = 100.0 * levels;
  if (isThere) {
    Plant(server).Node("Changing", "Level", id, UA_TYPES_DOUBLE, &value);
  } else {
    UA_Server_deleteNode(server, IdOf(id), true);
  }
}

}  // namespace sim
