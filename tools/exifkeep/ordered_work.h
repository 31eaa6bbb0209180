// Work on several threads whose results are delivered one at a time, in the order of the work.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace program {

class OrderedWork {
 public:
  using Delivery = std::function<void()>;

  // `work` runs on the threads. What it returns runs under a lock, on whichever thread completes
  // the order, and then `flush`; when that returns false, all work ends.
  OrderedWork(size_t threads, std::function<Delivery(const std::string&)> work,
              std::function<bool()> flush);
  ~OrderedWork();
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  // Waits while much is undone. False once the work has ended.
  bool add(const std::string& name);
  // Waits for all deliveries; false when the work ended before. Throws on what a thread threw.
  bool finish();

 private:
  void run();
  void end(std::exception_ptr error);
  bool isNextReady() const;
  void deliver();

  const std::function<Delivery(const std::string&)> work_;
  const std::function<bool()> flush_;
  std::mutex mutex_;  // of all that follows
  std::condition_variable nameAdded_, resultDelivered_;
  std::deque<std::string> names_;
  size_t taken_ = 0, delivered_ = 0;    // how many names so far
  std::map<size_t, Delivery> results_;  // not delivered yet, by the number of the name
  bool complete_ = false;               // no name will be added
  bool ended_ = false;
  std::exception_ptr error_;
  std::vector<std::thread> threads_;
};

}  // namespace program
