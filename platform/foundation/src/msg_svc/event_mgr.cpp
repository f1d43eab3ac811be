#include <boost/signals2/signal.hpp>
#include <cstdint>
#include <deque>
#include <foundation/msg_svc/eventmgr/event_mgr.hpp>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace foundation::msg_svc::eventmgr {

namespace {

struct QueuedEvent {
  std::uint64_t number;
  boost::shared_ptr<const Event> event;
};

}  // namespace

Event::~Event() = default;

class EventMgr::Impl {
 public:
  void Post(boost::shared_ptr<const Event> event) {
    const std::lock_guard lock(mutex_);
    queue_.push_back({lastNumber_ + 1, std::move(event)});
    ++lastNumber_;
  }

  std::size_t Dispatch() {
    const std::uint64_t last = GetLastNumber();
    std::size_t count = 0;
    for (auto event = TakeUpTo(last); event; event = TakeUpTo(last)) {
      signal_(event);
      ++count;
    }
    return count;
  }

  boost::signals2::connection Connect(const Slot& slot) { return signal_.connect(slot); }

 private:
  [[nodiscard]] std::uint64_t GetLastNumber() const {
    const std::lock_guard lock(mutex_);
    return lastNumber_;
  }

  /// The oldest event, unless it was posted after the one with number `last`. A slot may dispatch too, so the numbers
  /// decide.
  boost::shared_ptr<const Event> TakeUpTo(std::uint64_t last) {
    const std::lock_guard lock(mutex_);
    if (queue_.empty() || queue_.front().number > last) return nullptr;
    boost::shared_ptr<const Event> event = std::move(queue_.front().event);
    queue_.pop_front();
    return event;
  }

  mutable std::mutex mutex_;
  std::deque<QueuedEvent> queue_;
  std::uint64_t lastNumber_ = 0;
  boost::signals2::signal<void(const boost::shared_ptr<const Event>&)> signal_;
};

EventMgr::EventMgr() : impl_(std::make_unique<Impl>()) {}

EventMgr::~EventMgr() = default;

void EventMgr::post(boost::shared_ptr<Event> event, int /*options*/) {
  if (!event) throw std::invalid_argument("an event to post must not be null");
  impl_->Post(std::move(event));
}

std::size_t EventMgr::dispatch() { return impl_->Dispatch(); }

EventConnection EventMgr::connect(const Slot& slot) {
  return EventConnection([connection = impl_->Connect(slot)] { connection.disconnect(); });
}

std::shared_ptr<EventMgr> createLocalEventMgr(EmId id) {
  // Never destroyed: events are posted until the very end.
  static const auto& session = *new std::shared_ptr<EventMgr>(std::make_shared<EventMgr>());
  if (id != SessionEmId) throw std::invalid_argument("there is no event manager of that id");
  return session;
}

}  // namespace foundation::msg_svc::eventmgr
