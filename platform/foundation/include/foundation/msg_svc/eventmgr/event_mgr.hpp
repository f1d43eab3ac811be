#pragma once

#include <boost/smart_ptr/shared_ptr.hpp>
#include <cstddef>
#include <foundation/core/scoped_release.hpp>
#include <foundation/export.hpp>
#include <functional>
#include <memory>

namespace foundation::msg_svc::eventmgr {

/// What is posted: an immutable value of a derived class, which slots recognise by a dynamic cast.
class FOUNDATION_EXPORT Event {
 public:
  virtual ~Event();
  /// A copy on the heap, of the same dynamic type; the caller owns it.
  [[nodiscard]] virtual Event* clone() const = 0;

 protected:
  Event() = default;
  Event(const Event&) = default;
  Event& operator=(const Event&) = default;
};

/// Its end disconnects the slot.
using EventConnection = core::ScopedRelease;

/// Events between parts of one session: posted from any thread, delivered when somebody dispatches.
///
/// Safe from any thread. A manager shares the events that are queued and owns the slots until their connections go. No
/// storage is touched.
class FOUNDATION_EXPORT EventMgr {
 public:
  /// Called on the thread that dispatches, with the event that all slots share.
  using Slot = std::function<void(const boost::shared_ptr<const Event>&)>;

  /// Nothing is queued and nobody connected.
  EventMgr();
  EventMgr(const EventMgr&) = delete;
  EventMgr& operator=(const EventMgr&) = delete;
  ~EventMgr();

  /// Queues `event` and returns at once. `options` is reserved: pass 0. Throws std::invalid_argument when the event is
  /// null.
  void post(boost::shared_ptr<Event> event, int options);

  /// Delivers what was queued when it was entered, in posting order, on this thread, to every slot then connected, and
  /// returns how many events that were. What slots post waits for the next call.
  ///
  /// A slot's exception passes to the caller: its event counts as delivered, the rest stays queued.
  std::size_t dispatch();

  /// Calls `slot` with each event until the connection goes; slots are called in the order of connecting. A call that
  /// is under way on another thread at that moment ends on its own. While it is called, a slot may connect, disconnect
  /// (itself, too), post and dispatch; a slot that it connects hears nothing of the event in hand.
  [[nodiscard]] EventConnection connect(const Slot& slot);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

/// Which manager is meant; so far there is one.
enum EmId : int { SessionEmId };

/// The manager that `id` stands for: the session's one, the same for every caller in the process. Throws
/// std::invalid_argument for any other value.
[[nodiscard]] FOUNDATION_EXPORT std::shared_ptr<EventMgr> createLocalEventMgr(EmId id);

}  // namespace foundation::msg_svc::eventmgr
