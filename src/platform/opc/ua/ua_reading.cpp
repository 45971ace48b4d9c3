#include "platform/opc/ua/ua_reading.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/opc/opc_id.h"
#include "platform/opc/ua/ua_values.h"

namespace velk::ua {

namespace {

constexpr UA_UInt32 kPageSize = 500;  ///< references of an answer
constexpr std::array<UA_AttributeId, 3> kTraitAttributes = {UA_ATTRIBUTEID_DATATYPE, UA_ATTRIBUTEID_VALUERANK,
                                                            UA_ATTRIBUTEID_USERACCESSLEVEL};
constexpr UA_UInt32 kHasProperty = 46;
constexpr UA_UInt32 kHierarchical = 33;
constexpr UA_UInt32 kHasComponent = 47;

using NodeId = Owned<UA_NodeId>;

bool Parse(const std::string& text, UA_NodeId& id) {
  return UA_NodeId_parse(&id, ViewOf(text)) == UA_STATUSCODE_GOOD;
}

template <class Held>
const Held* ScalarOf(const UA_DataValue& value, int type) {
  const bool isOne = value.hasValue && UA_Variant_hasScalarType(&value.value, &UA_TYPES[type]);
  return isOne && IsGood(value.hasStatus ? value.status : UA_STATUSCODE_GOOD) ? static_cast<Held*>(value.value.data)
                                                                              : nullptr;
}

/// Whether a server takes fewer questions at once, as small ones do.
bool IsTooMuch(OpcStatus status, const std::vector<std::string>& ids) {
  return status == UA_STATUSCODE_BADTOOMANYOPERATIONS && ids.size() > 1;
}

/// Asks for the one half of the nodes, then for the other, and puts both answers together.
template <class Answers, class Read>
void ReadHalves(const ConnectionPointer& connection, const std::vector<std::string>& ids, Read read,
                std::function<void(OpcStatus, const Answers&)> done) {
  const auto middle = ids.begin() + static_cast<std::ptrdiff_t>(ids.size() / 2);
  read(connection, {ids.begin(), middle},
       [weak = std::weak_ptr(connection), rest = std::vector(middle, ids.end()), read, done = std::move(done)](
           OpcStatus status, const Answers& first) {
         const ConnectionPointer alive = weak.lock();
         if (!IsGood(status) || !alive) return done(status, {});
         read(alive, rest, [first, done](OpcStatus other, const Answers& second) {
           Answers all = first;
           all.insert(all.end(), second.begin(), second.end());
           done(other, all);
         });
       });
}

/// Of the three attributes of a node.
Traits TraitsOf(const UA_DataValue* values) {
  Traits traits;
  const auto* const type = ScalarOf<UA_NodeId>(values[0], UA_TYPES_NODEID);
  if (type == nullptr) {
    traits.status = values[0].hasStatus && !IsGood(values[0].status) ? values[0].status : kOpcTypeMismatch;
    return traits;
  }
  traits.dataType = TextOf(*type);
  if (const auto known = TypeOf(*type)) {
    traits.hasType = true;
    traits.type.type = *known;
  }
  const auto* const rank = ScalarOf<UA_Int32>(values[1], UA_TYPES_INT32);
  traits.type.isArray = rank != nullptr && *rank >= 0;
  const auto* const access = ScalarOf<UA_Byte>(values[2], UA_TYPES_BYTE);
  traits.isReadable = access != nullptr && (*access & UA_ACCESSLEVELMASK_READ) != 0;
  traits.isWritable = access != nullptr && (*access & UA_ACCESSLEVELMASK_WRITE) != 0;
  return traits;
}

Reference ReferenceOf(const UA_ReferenceDescription& found) {
  Reference reference;
  reference.id = TextOf(found.nodeId.nodeId);
  reference.name = TextOf(found.displayName.text.length > 0 ? found.displayName.text : found.browseName.name);
  reference.browseName = TextOf(found.browseName.name);
  reference.nameSpace = found.browseName.namespaceIndex;
  reference.isVariable = found.nodeClass == UA_NODECLASS_VARIABLE;
  return reference;
}

void TakePage(const ConnectionPointer& connection, const UA_BrowseResult& result, const TakeReferences& page);

/// Asks for the page behind a continuation point; without `isWanted` the server only forgets it.
void BrowseOn(const ConnectionPointer& connection, const UA_ByteString& point, bool isWanted, TakeReferences page) {
  UA_ByteString view = point;
  UA_BrowseNextRequest request;
  UA_BrowseNextRequest_init(&request);
  request.releaseContinuationPoints = !isWanted;
  request.continuationPoints = &view;
  request.continuationPointsSize = 1;
  connection->Call<UA_BrowseNextResponse>(
      &request, UA_TYPES_BROWSENEXTREQUEST, UA_TYPES_BROWSENEXTRESPONSE,
      [weak = std::weak_ptr(connection), isWanted, page = std::move(page)](OpcStatus status, auto* response) {
        const ConnectionPointer alive = weak.lock();
        if (!alive || !isWanted) return;
        if (response == nullptr || response->resultsSize != 1) {
          page(IsGood(status) ? kOpcBadId : status, {}, true);
        } else {
          TakePage(alive, response->results[0], page);
        }
      });
}

void TakePage(const ConnectionPointer& connection, const UA_BrowseResult& result, const TakeReferences& page) {
  if (!IsGood(result.statusCode)) {
    page(result.statusCode, {}, true);
    return;
  }
  std::vector<Reference> references;
  for (std::size_t i = 0; i < result.referencesSize; ++i) references.push_back(ReferenceOf(result.references[i]));
  const bool isLast = result.continuationPoint.length == 0;
  const bool isWanted = page(kOpcGood, references, isLast);
  if (!isLast) BrowseOn(connection, result.continuationPoint, isWanted, page);
}

/// Goes down a path, a step an answer.
void ResolveSteps(const ConnectionPointer& connection, const std::string& from, std::vector<OpcStep> steps,
                  std::function<void(OpcStatus, const std::string&)> done) {
  if (steps.empty()) return done(kOpcGood, from);
  const OpcStep step = steps.front();
  steps.erase(steps.begin());
  BrowseNode(connection, from,
             [weak = std::weak_ptr(connection), step, steps = std::move(steps), done = std::move(done)](
                 OpcStatus status, const std::vector<Reference>& references, bool isLast) {
               const auto found = std::find_if(references.begin(), references.end(), [&](const Reference& each) {
                 return each.browseName == step.name && (!step.nameSpace || *step.nameSpace == each.nameSpace);
               });
               if (found == references.end()) {
                 if (isLast) done(IsGood(status) ? kOpcUnknownId : status, {});
                 return true;
               }
               if (const ConnectionPointer alive = weak.lock()) ResolveSteps(alive, found->id, steps, done);
               return false;
             });
}

}  // namespace

void ReadTraits(const ConnectionPointer& connection, const std::vector<std::string>& ids,
                std::function<void(OpcStatus, const std::vector<Traits>&)> done) {
  Owned<UA_ReadRequest> request(UA_TYPES[UA_TYPES_READREQUEST]);
  request->nodesToReadSize = ids.size() * kTraitAttributes.size();
  request->nodesToRead =
      static_cast<UA_ReadValueId*>(UA_Array_new(request->nodesToReadSize, &UA_TYPES[UA_TYPES_READVALUEID]));
  request->timestampsToReturn = UA_TIMESTAMPSTORETURN_NEITHER;
  for (std::size_t i = 0; i < request->nodesToReadSize; ++i) {
    request->nodesToRead[i].attributeId = kTraitAttributes[i % kTraitAttributes.size()];
    if (!Parse(ids[i / kTraitAttributes.size()], request->nodesToRead[i].nodeId)) return done(kOpcBadId, {});
  }
  connection->Call<UA_ReadResponse>(
      &*request, UA_TYPES_READREQUEST, UA_TYPES_READRESPONSE,
      [weak = std::weak_ptr(connection), ids, done = std::move(done)](OpcStatus status, UA_ReadResponse* response) {
        const ConnectionPointer alive = weak.lock();
        if (alive && IsTooMuch(status, ids)) return ReadHalves<std::vector<Traits>>(alive, ids, ReadTraits, done);
        std::vector<Traits> traits;
        if (response != nullptr && response->resultsSize == ids.size() * kTraitAttributes.size()) {
          for (std::size_t i = 0; i < ids.size(); ++i)
            traits.push_back(TraitsOf(response->results + i * kTraitAttributes.size()));
        } else if (IsGood(status)) {
          status = kOpcBadId;
        }
        done(status, traits);
      });
}

void ResolveItem(const ConnectionPointer& connection, const std::string& id,
                 std::function<void(OpcStatus, const std::string&)> done) {
  if (IsOpcNodeId(id)) {
    NodeId parsed(UA_TYPES[UA_TYPES_NODEID]);
    return done(Parse(id, *parsed) ? kOpcGood : kOpcBadId, id);
  }
  std::optional<std::vector<OpcStep>> steps = OpcPathOf(id);
  if (!steps) return done(kOpcBadId, {});
  ResolveSteps(connection, kRootId, std::move(*steps), std::move(done));
}

void ReadHasRange(const ConnectionPointer& connection, const std::string& id,
                  std::function<void(OpcStatus, bool)> done) {
  UA_RelativePathElement step;
  UA_RelativePathElement_init(&step);
  step.referenceTypeId = UA_NODEID_NUMERIC(0, kHasProperty);
  step.targetName.name = ViewOf("EURange");
  UA_BrowsePath path;
  UA_BrowsePath_init(&path);
  path.relativePath.elements = &step;
  path.relativePath.elementsSize = 1;
  NodeId node(UA_TYPES[UA_TYPES_NODEID]);
  if (!Parse(id, *node)) return done(kOpcBadId, false);
  path.startingNode = *node;
  UA_TranslateBrowsePathsToNodeIdsRequest request;
  UA_TranslateBrowsePathsToNodeIdsRequest_init(&request);
  request.browsePaths = &path;
  request.browsePathsSize = 1;
  connection->Call<UA_TranslateBrowsePathsToNodeIdsResponse>(
      &request, UA_TYPES_TRANSLATEBROWSEPATHSTONODEIDSREQUEST, UA_TYPES_TRANSLATEBROWSEPATHSTONODEIDSRESPONSE,
      [done = std::move(done)](OpcStatus status, auto* response) {
        done(status, response != nullptr && response->resultsSize == 1 && IsGood(response->results[0].statusCode) &&
                         response->results[0].targetsSize > 0);
      });
}

namespace {

/// Asks of each node for one part.
UA_StatusCode AskForParts(const std::vector<std::string>& ids, UA_BrowseRequest& request) {
  request.requestedMaxReferencesPerNode = 1;
  request.nodesToBrowseSize = ids.size();
  request.nodesToBrowse =
      static_cast<UA_BrowseDescription*>(UA_Array_new(ids.size(), &UA_TYPES[UA_TYPES_BROWSEDESCRIPTION]));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    UA_BrowseDescription& what = request.nodesToBrowse[i];
    what.browseDirection = UA_BROWSEDIRECTION_FORWARD;
    what.referenceTypeId = UA_NODEID_NUMERIC(0, kHasComponent);
    what.includeSubtypes = true;
    what.nodeClassMask = UA_NODECLASS_OBJECT | UA_NODECLASS_VARIABLE;
    if (!Parse(ids[i], what.nodeId)) return UA_STATUSCODE_BADNODEIDINVALID;
  }
  return UA_STATUSCODE_GOOD;
}

/// Whether the server found one; a server that has no place to remember that there are more says so.
std::vector<bool> PartsOf(const ConnectionPointer& connection, const UA_BrowseResponse& response) {
  std::vector<bool> haveParts;
  for (std::size_t i = 0; i < response.resultsSize; ++i) {
    const UA_BrowseResult& result = response.results[i];
    haveParts.push_back(result.referencesSize > 0 || result.statusCode == UA_STATUSCODE_BADNOCONTINUATIONPOINTS);
    if (result.continuationPoint.length > 0)
      BrowseOn(connection, result.continuationPoint, false,
               [](OpcStatus, const std::vector<Reference>&, bool) { return false; });
  }
  return haveParts;
}

void TryHaveParts(const ConnectionPointer& connection, const std::vector<std::string>& ids,
                  std::function<void(OpcStatus, const std::vector<bool>&)> done) {
  Owned<UA_BrowseRequest> request(UA_TYPES[UA_TYPES_BROWSEREQUEST]);
  const UA_StatusCode readable = AskForParts(ids, *request);
  if (readable != UA_STATUSCODE_GOOD) return done(readable, {});
  connection->Call<UA_BrowseResponse>(
      &*request, UA_TYPES_BROWSEREQUEST, UA_TYPES_BROWSERESPONSE,
      [weak = std::weak_ptr(connection), ids, done = std::move(done)](OpcStatus status, UA_BrowseResponse* response) {
        const ConnectionPointer alive = weak.lock();
        if (alive && IsTooMuch(status, ids)) return ReadHalves<std::vector<bool>>(alive, ids, TryHaveParts, done);
        const bool isWhole = alive && response != nullptr && response->resultsSize == ids.size();
        done(status, isWhole ? PartsOf(alive, *response) : std::vector<bool>(ids.size()));
      });
}

}  // namespace

void ReadHaveParts(const ConnectionPointer& connection, const std::vector<std::string>& ids,
                   std::function<void(const std::vector<bool>&)> done) {
  TryHaveParts(connection, ids, [count = ids.size(), done = std::move(done)](OpcStatus, std::vector<bool> haveParts) {
    haveParts.resize(count);
    done(haveParts);
  });
}

void BrowseNode(const ConnectionPointer& connection, const std::string& id, TakeReferences page) {
  NodeId node(UA_TYPES[UA_TYPES_NODEID]);
  if (!Parse(id, *node)) {
    page(kOpcBadId, {}, true);
    return;
  }
  UA_BrowseDescription what;
  UA_BrowseDescription_init(&what);
  what.nodeId = *node;
  what.browseDirection = UA_BROWSEDIRECTION_FORWARD;
  what.referenceTypeId = UA_NODEID_NUMERIC(0, kHierarchical);
  what.includeSubtypes = true;
  what.nodeClassMask = UA_NODECLASS_OBJECT | UA_NODECLASS_VARIABLE;
  what.resultMask = UA_BROWSERESULTMASK_ALL;
  UA_BrowseRequest request;
  UA_BrowseRequest_init(&request);
  request.requestedMaxReferencesPerNode = kPageSize;
  request.nodesToBrowse = &what;
  request.nodesToBrowseSize = 1;
  connection->Call<UA_BrowseResponse>(
      &request, UA_TYPES_BROWSEREQUEST, UA_TYPES_BROWSERESPONSE,
      [weak = std::weak_ptr(connection), page = std::move(page)](OpcStatus status, auto* response) {
        if (response == nullptr || response->resultsSize != 1) {
          page(IsGood(status) ? kOpcBadId : status, {}, true);
        } else if (const ConnectionPointer alive = weak.lock()) {
          TakePage(alive, response->results[0], page);
        }
      });
}

}  // namespace velk::ua
