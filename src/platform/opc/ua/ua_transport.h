#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/loop/clock.h"
#include "platform/opc/opc_questions.h"
#include "platform/opc/opc_transport.h"

namespace velk {

/// Looks the addresses of a host up beside the event loop, and tells them from it: IPv4, or IPv6 without brackets, the
/// best first.
using OpcLookUp =
    std::function<void(const std::string& host, std::function<void(const std::vector<std::string>& addresses)> found)>;

/// Where the program was built without the OPC UA library each call fails by kOpcNotSupported. Else OPC UA over the
/// machine's own network. It works in ticks of the event loop while there is a session or a search.
///
/// Without questions no certificate is accepted that wasn't before, and nobody logs in. `keys` is the folder of the
/// program's own key and of accepted certificates; empty: that of the user. Without `lookUp` the system knows hosts.
std::unique_ptr<OpcTransport> MakeUaTransport(Clock& clock, OpcQuestions* questions = nullptr,
                                              const std::string& keys = {}, OpcLookUp lookUp = {});

}  // namespace velk
