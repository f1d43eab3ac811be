#include <algorithm>
#include <iterator>
#include <support/call_log.hpp>

namespace Quorvex::PathManagement::support {

void CallLog::Note(Call call) {
  const std::scoped_lock lock(mutex_);
  calls_.push_back(std::move(call));

  const std::string& operation = calls_.back().operation;
  const auto planned = failuresLeft_.find(operation);
  if (planned == failuresLeft_.end() || planned->second == 0) return;
  --planned->second;
  throw InjectedFailure(operation);
}

void CallLog::FailNext(std::string_view operation, int times) {
  const std::scoped_lock lock(mutex_);
  failuresLeft_[std::string(operation)] = times;
}

std::vector<Call> CallLog::GetCalls() const {
  const std::scoped_lock lock(mutex_);
  return calls_;
}

std::vector<std::string> CallLog::GetOperations() const {
  const std::scoped_lock lock(mutex_);
  std::vector<std::string> operations;
  std::transform(calls_.begin(), calls_.end(), std::back_inserter(operations),
                 [](const Call& call) { return call.operation; });
  return operations;
}

void CallLog::Clear() {
  const std::scoped_lock lock(mutex_);
  calls_.clear();
}

}  // namespace Quorvex::PathManagement::support
