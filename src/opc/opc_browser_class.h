#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "opc/opc_calls.h"

namespace velk {

enum class OpcAccess { Any, ReadOnly, WriteOnly };
enum class OpcOrganization { Hierarchical = 1, Flat = 2 };

/// Walks through the folders of a server. What fails shows its box, gives false and leaves all as it was.
class OPCBrowserClass {
 public:
  explicit OPCBrowserClass(OpcCalls& calls) : calls_(calls) {}

  /// The session outlives the browser, which begins at its root.
  void SetBrowserObject(OpcSession& session);
  OpcOrganization GetBrowserOrganization() const { return OpcOrganization::Hierarchical; }

  bool MoveToRoot();
  /// Into a branch of this folder.
  bool MoveDown(const std::string& branch);
  /// False at the root.
  bool MoveUp();

  /// Fills the items with the branches / with the leaves of this folder that pass the filters.
  bool ShowBranches();
  bool ShowLeafs();
  /// Told while ShowLeafs waits for a folder that comes in parts: the names of the first part that pass the filters.
  std::function<void(const std::vector<std::string>& names)> onFirstLeafs;
  int GetItemCount() const { return static_cast<int>(items_.size()); }
  /// Items count from 1; nothing, behind a box, where there is no such one.
  std::optional<std::string> GetItemName(int item);
  /// The whole identifier of an item that is shown, by its name.
  std::optional<std::string> GetItemID(const std::string& name);

  /// "*" stands for any characters, "?" for one, letters of either case; empty lets all pass.
  void SetFilter(const std::string& names) { names_ = names; }
  void SetDataTypeFilter(const OpcDataType& type) { type_ = type; }
  void SetAccessFilter(OpcAccess access) { access_ = access; }

 private:
  /// Reads what stands in this folder, unless that is known.
  OpcStatus Look();
  void TellFirst(const std::vector<OpcNode>& nodes) const;
  bool Passes(const OpcNode& leaf) const;

  OpcCalls& calls_;
  OpcSession* session_ = nullptr;
  std::vector<std::string> path_;             ///< identifiers of the branches down to here
  std::optional<std::vector<OpcNode>> here_;  ///< what stands in this folder
  std::vector<OpcNode> items_;
  std::string names_;
  OpcDataType type_;
  OpcAccess access_ = OpcAccess::Any;
  std::shared_ptr<char> life_ = std::make_shared<char>();
};

/// Whether a name passes a filter as SetFilter takes it.
bool PassesOpcFilter(const std::string& name, const std::string& filter);

}  // namespace velk
