#include "apps/serve/catalog.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <utility>

#include "apps/serve/route.h"
#include "kit/files/files.h"
#include "kit/request/error.h"
#include "kit/request/values.h"
#include "kit/view/load.h"
#include "kit/view/map_facts.h"

namespace vexel::serve {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kBetweenLooks{1};

DataSet FactsOf(View& view) {
  DataSet facts;
  facts.title = view.map.GetName().View();
  facts.variables = view.data.GetNumVars();
  facts.areas = static_cast<std::size_t>(CountMap(view.map).areas);
  return facts;
}

// In the order of their names; none when the folder cannot be read.
std::vector<std::string> DataFilesIn(const std::string& folder, std::error_code& error) {
  std::vector<std::string> files;
  for (fs::directory_iterator entry(folder, error), end; entry != end; entry.increment(error)) {
    if (entry->path().extension() == ".mdf") files.push_back(entry->path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

LoadedSet::Stamp LoadedSet::StampOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return {};
  return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ino, status.st_size};
}

// Which map it is that counts stands in the data file.
std::vector<LoadedSet::Stamp> LoadedSet::Look() {
  std::vector<Stamp> stamps{StampOf(path_)};
  if (stamps_.empty() || stamps_.front() != stamps.front()) mapFiles_ = MapFilesOf(path_);
  for (const std::string& file : mapFiles_) stamps.push_back(StampOf(file));
  return stamps;
}

void LoadedSet::Load() {
  // Looked at first: what changes while it is read is read again.
  looked_ = std::chrono::steady_clock::now();
  stamps_ = Look();
  try {
    Borrow("");
  } catch (const Error&) {
  }
}

std::uint64_t LoadedSet::Version() {
  const auto now = std::chrono::steady_clock::now();
  if (now - looked_ < kBetweenLooks) return version_;
  looked_ = now;
  std::vector<Stamp> stamps = Look();
  if (std::exchange(stamps_, stamps) != stamps) ++version_;
  return version_;
}

std::unique_ptr<View> LoadedSet::FirstView() const {
  Request request;
  request.data = path_;
  try {
    return std::make_unique<View>(request);
  } catch (const Error& error) {
    // The uppermost level may have nothing but names.
    for (int level = 2; level < CVELAMap::kMostLevels; ++level) {
      request.level = level;
      try {
        return std::make_unique<View>(request);
      } catch (const Error&) {
      }
    }
    throw;
  }
}

std::unique_ptr<KeptView> LoadedSet::LoadView(std::uint64_t version) {
  auto kept = std::make_unique<KeptView>();
  kept->version = version;
  try {
    kept->view = FirstView();
  } catch (const Error& error) {
    ++failures_;
    const std::lock_guard lock(mutex_);
    tried_ = std::max(tried_, version);
    trouble_ = error.what();
    return nullptr;
  }
  DataSet facts = FactsOf(*kept->view);
  const std::lock_guard lock(mutex_);
  if (version < loaded_) return kept;
  if (version > loaded_) {
    free_.clear();
    lent_ = 0;
    loaded_ = version;
  }
  trouble_.clear();
  described_ = std::move(facts);
  baseLevel_ = kept->view->request.level;
  ++lent_;
  return kept;
}

std::unique_ptr<KeptView> LoadedSet::TakeFree(std::string_view wanted) {
  if (free_.empty()) return nullptr;
  auto found = std::find_if(free_.begin(), free_.end(),
                            [=](const auto& kept) { return kept->shown == wanted; });
  if (found == free_.end()) found = std::prev(free_.end());
  std::unique_ptr<KeptView> kept = std::move(*found);
  free_.erase(found);
  ++lent_;
  return kept;
}

LoadedSet::Loan LoadedSet::Borrow(std::string_view wanted) {
  const std::uint64_t version = version_;
  bool isBroken = false;
  {
    const std::lock_guard lock(mutex_);
    if (loaded_ >= version) {
      if (auto kept = TakeFree(wanted)) return {*this, std::move(kept), {}};
    }
    isBroken = tried_ >= version;
  }
  if (!isBroken) {
    if (auto kept = LoadView(version)) return {*this, std::move(kept), {}};
  }
  // The files are broken: what was loaded of them before goes on.
  std::unique_lock lock(mutex_);
  returned_.wait(lock, [this] { return !free_.empty() || lent_ == 0; });
  auto kept = TakeFree(wanted);
  if (kept == nullptr) throw Failed(trouble_);
  return {*this, std::move(kept), trouble_};
}

void LoadedSet::GiveBack(std::unique_ptr<KeptView> kept) {
  {
    const std::lock_guard lock(mutex_);
    if (kept->version != loaded_) return;
    --lent_;
    free_.push_back(std::move(kept));
  }
  returned_.notify_one();
}

LoadedSet::Loan::~Loan() {
  if (kept_ != nullptr) set_->GiveBack(std::move(kept_));
}

Request LoadedSet::BaseRequest() const {
  Request request;
  request.data = path_;
  const std::lock_guard lock(mutex_);
  request.level = baseLevel_;
  return request;
}

DataSet LoadedSet::Describe() const {
  const std::lock_guard lock(mutex_);
  DataSet described = described_;
  described.set = name_;
  described.trouble = trouble_;
  return described;
}

Catalog::Catalog(const std::vector<std::string>& sources) {
  for (const std::string& source : sources) {
    std::error_code error;
    if (!fs::is_directory(source, error)) {
      CheckReadable(source);
      Add(source);
      continue;
    }
    const std::vector<std::string> files = DataFilesIn(source, error);
    if (error) throw Failed(source, "the folder cannot be read: " + error.message());
    if (files.empty()) throw Failed(source, "there is no data file (*.mdf) in the folder");
    for (const std::string& file : files) Add(file);
    folders_.push_back(source);
  }
  looked_ = std::chrono::steady_clock::now();
}

bool Catalog::LookForMore() {
  const auto now = std::chrono::steady_clock::now();
  if (now - looked_ < kBetweenLooks) return false;
  looked_ = now;
  const std::size_t before = sets_.size();
  for (const std::string& folder : folders_) {
    std::error_code ignored;
    for (const std::string& file : DataFilesIn(folder, ignored)) {
      if (!Has(file)) Add(file);
    }
  }
  return sets_.size() > before;
}

bool Catalog::Has(const std::string& path) const {
  return std::any_of(sets_.begin(), sets_.end(),
                     [&](const auto& set) { return set->Path() == path; });
}

// Files that several folders have under one name get numbers behind it.
void Catalog::Add(const std::string& path) {
  const std::string stem = fs::path(path).stem().string();
  const auto isTaken = [this](const std::string& name) {
    return Find(name) != nullptr || IsReserved(name);
  };
  std::string name = stem;
  for (int number = 2; isTaken(name); ++number) name = stem + '-' + std::to_string(number);
  sets_.push_back(std::make_unique<LoadedSet>(std::move(name), path));
}

void Catalog::Load() {
  for (const auto& set : sets_) set->Load();
  const auto isFine = [](const auto& set) { return set->Describe().trouble.empty(); };
  if (std::any_of(sets_.begin(), sets_.end(), isFine) || sets_.empty()) return;
  throw Failed(sets_.front()->Describe().trouble);
}

LoadedSet* Catalog::Find(std::string_view name) {
  const auto found = std::find_if(sets_.begin(), sets_.end(),
                                  [=](const auto& set) { return set->Name() == name; });
  return found == sets_.end() ? nullptr : found->get();
}

std::vector<DataSet> Catalog::Describe() const {
  std::vector<DataSet> described;
  described.reserve(sets_.size());
  for (const auto& set : sets_) described.push_back(set->Describe());
  return described;
}

}  // namespace vexel::serve
