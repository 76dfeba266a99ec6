#pragma once

#include <zep/Export.h>

namespace ZEP {

/// Root of everything that can be the sender or the receiver of a notification.
class ZEP_CORE_EXPORT TObject {
public:
    virtual ~TObject() = default;

protected:
    TObject() = default;
    TObject(const TObject&) = default;
    TObject& operator=(const TObject&) = default;
};

/// What draws from a collection and wants to hear of its changes.
class ZEP_CORE_EXPORT TZEPCollectionUser : public TObject {
public:
    /// It stands in a scene that is not updated by hand.
    [[nodiscard]] virtual bool WantsInvalidation() const = 0;
    virtual void Invalidate(TObject* sender) = 0;
};

/// A bound member function that takes the sender: two pointers, so that the hundred thousands of
/// sub-objects of a scene can each carry one.
class TNotifyEvent {
public:
    using Call = void (*)(TObject* receiver, TObject* sender);

    constexpr TNotifyEvent() = default;
    constexpr TNotifyEvent(TObject* receiver, Call call) : m_receiver(receiver), m_call(call) {}

    /// Calls the handler; does nothing where none is bound.
    void operator()(TObject* sender) const {
        if (m_call) m_call(m_receiver, sender);
    }
    constexpr explicit operator bool() const { return m_call != nullptr; }

private:
    TObject* m_receiver = nullptr;
    Call m_call = nullptr;
};

/// Binds `Method` of `receiver`: `Notify<&TZEPXForm::ChangeData>(this)`.
template <auto Method, class Receiver>
TNotifyEvent Notify(Receiver* receiver) {
    return {receiver, [](TObject* target, TObject* sender) {
                (static_cast<Receiver*>(target)->*Method)(sender);
            }};
}

} // namespace ZEP
