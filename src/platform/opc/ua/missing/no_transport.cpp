#include "platform/opc/ua/ua_transport.h"

namespace velk {

namespace {

/// Built where the OPC UA library is missing.
class NoTransport : public OpcTransport {
 public:
  void FindServers(const std::string& /*host*/, Servers done) override { done(kOpcNotSupported, {}); }
  void Connect(const OpcPlace& /*place*/, Connected done) override { done(kOpcNotSupported, nullptr); }
};

}  // namespace

std::unique_ptr<OpcTransport> MakeUaTransport(Clock& /*clock*/, OpcQuestions* /*questions*/,
                                              const std::string& /*keys*/, OpcLookUp /*lookUp*/) {  // NOLINT
  return std::make_unique<NoTransport>();
}

}  // namespace velk
