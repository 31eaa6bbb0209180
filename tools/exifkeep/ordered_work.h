// SPDX-License-Identifier: MIT
// Runs work on several threads and delivers the results one at a time, in the order of the work.
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
  using Names = std::vector<std::string>;
  using Delivery = std::function<void()>;

  // `work` is called on the threads, with one or more successive names. The function that it
  // returns is called in order under a lock, on any of the threads, followed by `flush`; if that
  // returns false, all work ends.
  OrderedWork(size_t threads, std::function<Delivery(const Names&)> work,
              std::function<bool()> flush);
  ~OrderedWork();
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  // Blocks while there is too much unfinished work. False once the work has ended.
  bool add(const std::string& name);
  // Waits for all deliveries; false if the work has ended early. Rethrows the exception of a
  // thread.
  bool finish();

 private:
  void run();
  void end(std::exception_ptr error);
  bool isNextReady() const;
  void deliver();

  struct Result {
    size_t count;  // of names
    Delivery deliver;
  };

  const std::function<Delivery(const Names&)> work_;
  const std::function<bool()> flush_;
  std::mutex mutex_;  // for all of the following
  std::condition_variable nameAdded_, resultDelivered_;
  std::deque<std::string> names_;
  size_t taken_ = 0, delivered_ = 0;  // numbers of names
  std::map<size_t, Result> results_;  // not yet delivered, by the number of the first name
  bool complete_ = false;             // no more names will be added
  bool ended_ = false;
  std::exception_ptr error_;
  std::vector<std::thread> threads_;
};

}  // namespace program
