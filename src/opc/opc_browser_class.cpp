#include "opc/opc_browser_class.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/text.h"

namespace velk {

namespace {

/// Bytes of the one character at the front of a text.
std::size_t FirstLength(std::string_view text) {
  return Left(text, 1).size();
}

/// Goes back to the last "*" only: what an earlier one took in never has to be taken back.
bool Matches(std::string_view name, std::string_view filter) {
  std::optional<std::pair<std::string_view, std::string_view>> lastStar;
  for (;;) {
    if (!filter.empty() && filter.front() == '*') {
      filter.remove_prefix(1);
      lastStar = {name, filter};
    } else if (!name.empty() && !filter.empty() && (filter.front() == '?' || filter.front() == name.front())) {
      name.remove_prefix(filter.front() == '?' ? FirstLength(name) : 1);
      filter.remove_prefix(1);
    } else if (name.empty() && filter.empty()) {
      return true;
    } else if (lastStar && !lastStar->first.empty()) {
      lastStar->first.remove_prefix(FirstLength(lastStar->first));
      std::tie(name, filter) = *lastStar;
    } else {
      return false;
    }
  }
}

/// Nodes are chosen by their names: those of one name get their identifiers behind it.
void TellApart(std::vector<OpcNode>& nodes) {
  std::map<std::string, int> counts;
  for (const OpcNode& node : nodes) ++counts[node.name];
  for (OpcNode& node : nodes)
    if (counts[node.name] > 1) node.name += " (" + node.id + ")";
}

}  // namespace

bool PassesOpcFilter(const std::string& name, const std::string& filter) {
  return filter.empty() || Matches(LowerCase(name), LowerCase(filter));
}

void OPCBrowserClass::SetBrowserObject(OpcSession& session) {
  session_ = &session;
  path_.clear();
  here_.reset();
  items_.clear();
}

bool OPCBrowserClass::MoveToRoot() {
  if (session_ == nullptr) return calls_.Succeeded("MoveToRoot", kOpcNotConnected);
  path_.clear();
  here_.reset();
  return true;
}

bool OPCBrowserClass::MoveDown(const std::string& branch) {
  OpcStatus status = Look();
  if (IsGood(status)) {
    const auto found = std::find_if(here_->begin(), here_->end(),
                                    [&](const OpcNode& node) { return node.isBranch && node.name == branch; });
    if (found != here_->end()) {
      path_.push_back(found->id);
      here_.reset();
      return true;
    }
    status = kOpcNotFound;
  }
  return calls_.Succeeded("MoveDown", status);
}

bool OPCBrowserClass::MoveUp() {
  if (path_.empty()) return calls_.Succeeded("MoveUp", session_ == nullptr ? kOpcNotConnected : kOpcNotFound);
  path_.pop_back();
  here_.reset();
  return true;
}

OpcStatus OPCBrowserClass::Look() {
  if (session_ == nullptr) return kOpcNotConnected;
  if (here_) return kOpcGood;
  const auto found = std::make_shared<std::vector<OpcNode>>();
  const std::string folder = path_.empty() ? std::string() : path_.back();
  const OpcStatus status = calls_.Wait([&](OpcDone done) {
    // A part may come behind a wait that was cancelled.
    session_->Browse(folder, [this, found, alive = std::weak_ptr(life_), done = std::move(done)](const OpcPage& page) {
      if (found->empty() && !page.isLast && !alive.expired()) TellFirst(page.nodes);
      found->insert(found->end(), page.nodes.begin(), page.nodes.end());
      if (!IsGood(page.status) || page.isLast) done(page.status);
    });
  });
  if (!IsGood(status)) return status;
  TellApart(*found);
  here_ = std::move(*found);
  return status;
}

void OPCBrowserClass::TellFirst(const std::vector<OpcNode>& nodes) const {
  if (!onFirstLeafs) return;
  std::vector<std::string> names;
  for (const OpcNode& node : nodes)
    if (node.isVariable && Passes(node)) names.push_back(node.name);
  onFirstLeafs(names);
}

bool OPCBrowserClass::ShowBranches() {
  if (!calls_.Succeeded("ShowBranches", Look())) return false;
  items_.clear();
  std::copy_if(here_->begin(), here_->end(), std::back_inserter(items_),
               [](const OpcNode& node) { return node.isBranch; });
  return true;
}

bool OPCBrowserClass::ShowLeafs() {
  if (!calls_.Succeeded("ShowLeafs", Look())) return false;
  items_.clear();
  std::copy_if(here_->begin(), here_->end(), std::back_inserter(items_),
               [&](const OpcNode& node) { return node.isVariable && Passes(node); });
  return true;
}

bool OPCBrowserClass::Passes(const OpcNode& leaf) const {
  if (access_ == OpcAccess::ReadOnly && !leaf.isReadable) return false;
  if (access_ == OpcAccess::WriteOnly && !leaf.isWritable) return false;
  if (type_ != OpcDataType{} && leaf.type != type_) return false;
  return PassesOpcFilter(leaf.name, names_);
}

std::optional<std::string> OPCBrowserClass::GetItemName(int item) {
  if (!calls_.Succeeded("GetItemName", item >= 1 && item <= GetItemCount() ? kOpcGood : kOpcNotFound))
    return std::nullopt;
  return items_[static_cast<std::size_t>(item) - 1].name;
}

std::optional<std::string> OPCBrowserClass::GetItemID(const std::string& name) {
  const auto found = std::find_if(items_.begin(), items_.end(), [&](const OpcNode& node) { return node.name == name; });
  if (!calls_.Succeeded("GetItemID", found != items_.end() ? kOpcGood : kOpcNotFound)) return std::nullopt;
  return found->id;
}

}  // namespace velk
