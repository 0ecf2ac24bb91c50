// The data sets that are served, by name, and their views.

#ifndef VEXEL_APPS_SERVE_CATALOG_H_
#define VEXEL_APPS_SERVE_CATALOG_H_

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "apps/serve/pages/pages.h"
#include "kit/view/area_finder.h"
#include "kit/view/view.h"

namespace vexel::serve {

// A view with what is known of it.
struct KeptView {
  std::unique_ptr<View> view;
  std::uint64_t version = 0;           // of the files it was loaded from
  std::string shown;                   // what it shows, in the words of whoever borrowed it
  std::unique_ptr<AreaFinder> finder;  // of what it shows; null: not made yet
};

// One data set. Its views are loaded when they are wanted and nobody else has left one, so that
// there are no more of them than threads at work.
class LoadedSet {
 public:
  LoadedSet(std::string name, std::string path) : name_(std::move(name)), path_(std::move(path)) {}

  const std::string& Name() const { return name_; }
  const std::string& Path() const { return path_; }

  // Loads the first view. What is wrong is kept as trouble.
  void Load();

  // Looks, at most once a second, whether the files have changed, and counts the changes.
  std::uint64_t Version();

  // A view to oneself for as long as this lives.
  class Loan {
   public:
    Loan(LoadedSet& set, std::unique_ptr<KeptView> kept, std::string trouble)
        : set_(&set), kept_(std::move(kept)), trouble_(std::move(trouble)) {}
    Loan(Loan&&) = default;
    Loan& operator=(Loan&&) = delete;
    ~Loan();

    KeptView& Kept() { return *kept_; }

    // Why it is not of the files as they are now; empty when it is.
    const std::string& Trouble() const { return trouble_; }

   private:
    LoadedSet* set_;
    std::unique_ptr<KeptView> kept_;
    std::string trouble_;
  };

  // Prefers a view that shows `wanted` already. Throws an Error when none was ever loaded.
  Loan Borrow(std::string_view wanted);

  // What holds where a request leaves it open: the first level that has outlines.
  Request BaseRequest() const;

  DataSet Describe() const;
  std::uint64_t Failures() const { return failures_; }

 private:
  // One file as the system tells it apart from what it was.
  struct Stamp {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    std::uint64_t inode = 0;
    std::int64_t size = -1;

    friend bool operator==(const Stamp&, const Stamp&) = default;
  };
  static Stamp StampOf(const std::string& path);

  std::vector<Stamp> Look();
  std::unique_ptr<KeptView> TakeFree(std::string_view wanted);
  std::unique_ptr<KeptView> LoadView(std::uint64_t version);
  std::unique_ptr<View> FirstView() const;
  void GiveBack(std::unique_ptr<KeptView> kept);

  const std::string name_;
  const std::string path_;

  std::atomic<std::uint64_t> version_ = 1;
  std::atomic<std::uint64_t> failures_ = 0;

  // Of the thread that asks for versions.
  std::chrono::steady_clock::time_point looked_;
  std::vector<Stamp> stamps_;  // of the data file and its map's
  std::vector<std::string> mapFiles_;

  mutable std::mutex mutex_;
  std::condition_variable returned_;
  std::vector<std::unique_ptr<KeptView>> free_;
  std::size_t lent_ = 0;      // of the version that is loaded
  std::uint64_t loaded_ = 0;  // the version of the views here; 0: none yet
  std::uint64_t tried_ = 0;   // the last version that could not be loaded
  std::string trouble_;       // why
  DataSet described_;
  std::optional<int> baseLevel_;
};

class Catalog {
 public:
  // Takes files, and folders for the data files in them. Throws an Error for what is neither, and
  // for a folder without any.
  explicit Catalog(const std::vector<std::string>& sources);

  // Loads each set. Throws the Error of the first when none can be.
  void Load();

  // Looks, at most once a second, for data files that have come into the folders; says whether it
  // found any. Sets stay, whatever becomes of their files.
  bool LookForMore();

  LoadedSet* Find(std::string_view name);
  std::vector<DataSet> Describe() const;
  const std::vector<std::unique_ptr<LoadedSet>>& Sets() const { return sets_; }

 private:
  void Add(const std::string& path);
  bool Has(const std::string& path) const;

  std::vector<std::string> folders_;
  std::chrono::steady_clock::time_point looked_;
  std::vector<std::unique_ptr<LoadedSet>> sets_;
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_CATALOG_H_
