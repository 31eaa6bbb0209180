// SPDX-License-Identifier: MIT
#include "ordered_work.h"

#include <algorithm>
#include <utility>

namespace program {
namespace {

// If there are many names, a thread takes several at a time, to reduce locking.
constexpr size_t maxTaken = 16;
// So many that a few slow files do not block the threads, but few enough to limit memory.
constexpr size_t maxUndone = 1024;

}  // namespace

OrderedWork::OrderedWork(size_t threads, std::function<Delivery(const Names&)> work,
                         std::function<bool()> flush)
    : work_(std::move(work)), flush_(std::move(flush)) {
  while (threads_.size() < threads) threads_.emplace_back([this] { run(); });
}

OrderedWork::~OrderedWork() {
  if (!threads_.empty()) end(nullptr);
  for (std::thread& thread : threads_) thread.join();
}

bool OrderedWork::add(const std::string& name) {
  std::unique_lock lock(mutex_);
  resultDelivered_.wait(
      lock, [this] { return ended_ || names_.size() + taken_ - delivered_ < maxUndone; });
  names_.push_back(name);
  nameAdded_.notify_one();
  return !ended_;
}

bool OrderedWork::finish() {
  {
    const std::lock_guard lock(mutex_);
    complete_ = true;
  }
  nameAdded_.notify_all();
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
  if (error_) std::rethrow_exception(error_);
  return !ended_;
}

void OrderedWork::end(std::exception_ptr error) {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  if (!error_) error_ = std::move(error);
  nameAdded_.notify_all();
  resultDelivered_.notify_all();
}

void OrderedWork::run() try {
  Names names;
  std::unique_lock lock(mutex_);
  for (;;) {
    nameAdded_.wait(lock, [this] { return ended_ || complete_ || !names_.empty(); });
    if (ended_ || names_.empty()) return;
    const size_t count = std::clamp<size_t>(names_.size() / threads_.size(), 1, maxTaken);
    const auto end = names_.begin() + static_cast<std::ptrdiff_t>(count);
    names.assign(std::move_iterator(names_.begin()), std::move_iterator(end));
    names_.erase(names_.begin(), end);
    const size_t first = std::exchange(taken_, taken_ + count);
    lock.unlock();
    Delivery result = work_(names);
    lock.lock();
    results_.emplace(first, Result{count, std::move(result)});
    if (!ended_) deliver();
  }
} catch (...) {
  end(std::current_exception());
}

bool OrderedWork::isNextReady() const {
  return !results_.empty() && results_.begin()->first == delivered_;
}

void OrderedWork::deliver() {
  if (!isNextReady()) return;
  while (isNextReady()) {
    const auto next = results_.begin();
    next->second.deliver();
    delivered_ += next->second.count;
    results_.erase(next);
  }
  if (!flush_()) {
    ended_ = true;
    nameAdded_.notify_all();
  }
  resultDelivered_.notify_one();
}

}  // namespace program
