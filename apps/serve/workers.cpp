#include "apps/serve/workers.h"

#include <utility>

namespace vexel::serve {

Workers::Workers(int threads, std::size_t mostWaiting) : mostWaiting_(mostWaiting) {
  threads_.reserve(static_cast<std::size_t>(threads));
  for (int i = 0; i < threads; ++i) threads_.emplace_back([this] { Work(); });
}

Workers::~Workers() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
    jobs_.clear();
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

bool Workers::Give(Job job) {
  {
    const std::lock_guard lock(mutex_);
    if (jobs_.size() >= mostWaiting_) return false;
    jobs_.push_back(std::move(job));
  }
  changed_.notify_one();
  return true;
}

std::size_t Workers::Waiting() const {
  const std::lock_guard lock(mutex_);
  return jobs_.size();
}

bool Workers::AreIdle() const {
  const std::lock_guard lock(mutex_);
  return jobs_.empty() && busy_ == 0;
}

void Workers::Work() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return ends_ || !jobs_.empty(); });
    if (ends_) return;
    Job job = std::move(jobs_.front());
    jobs_.pop_front();
    ++busy_;
    lock.unlock();
    job();
    job = nullptr;
    lock.lock();
    --busy_;
  }
}

}  // namespace vexel::serve
