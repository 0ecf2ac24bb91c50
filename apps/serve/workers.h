// Threads that do what is handed to them.

#ifndef VEXEL_APPS_SERVE_WORKERS_H_
#define VEXEL_APPS_SERVE_WORKERS_H_

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace vexel::serve {

class Workers {
 public:
  using Job = std::function<void()>;

  // Jobs must not throw. More than `mostWaiting` are not taken.
  Workers(int threads, std::size_t mostWaiting);
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  // Lets jobs under way end and forgets those that wait.
  ~Workers();

  // False when too many are waiting.
  bool Give(Job job);

  std::size_t Waiting() const;

  // Whether nothing is waiting or under way.
  bool AreIdle() const;

 private:
  void Work();

  std::size_t mostWaiting_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Job> jobs_;
  int busy_ = 0;
  bool ends_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace vexel::serve

#endif  // VEXEL_APPS_SERVE_WORKERS_H_
