/// To be loaded before a program that ThreadSanitizer watches. Qt itself is not compiled for it, and hands work from
/// thread to thread under locks of its own, so everything handed over would be reported. This says what Qt guarantees:
/// what was done before a call was queued, or a task was given to a pool, has happened when it runs; and what a task
/// did, when one has waited for it.
#include <QDeadlineTimer>
#include <QObject>
#include <QThread>
#include <QThreadPool>

#include <dlfcn.h>

#include <functional>
#include <utility>

extern "C" {
[[gnu::weak]] void __tsan_acquire(void *address);
[[gnu::weak]] void __tsan_release(void *address);
}

namespace {

void acquire(void *address)
{
    if (__tsan_acquire)
        __tsan_acquire(address);
}

void release(void *address)
{
    if (__tsan_release)
        __tsan_release(address);
}

/// Qt's own function of that mangled name.
template <class Function>
Function *original(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

/// A queued call, with what happened before it.
class QueuedCall : public QtPrivate::QSlotObjectBase
{
public:
    explicit QueuedCall(QSlotObjectBase *call) : QSlotObjectBase(&run), m_call(call) { release(this); }

private:
    static void run(int which, QSlotObjectBase *self, QObject *receiver, void **arguments, bool *)
    {
        auto *queued = static_cast<QueuedCall *>(self);
        acquire(queued);
        if (which == Call) {
            queued->m_call->call(receiver, arguments);
            release(queued);
            release(QThread::currentThread());
        } else if (which == Destroy) {
            queued->m_call->destroyIfLastRef();
            release(QThread::currentThread());
            delete queued;
        }
    }

    QSlotObjectBase *m_call;
};

} // namespace

bool QMetaObject::invokeMethodImpl(QObject *object, QtPrivate::QSlotObjectBase *call, Qt::ConnectionType type,
                                   void *result)
{
    using Invoke = bool(QObject *, QtPrivate::QSlotObjectBase *, Qt::ConnectionType, void *);
    static const auto invoke = original<Invoke>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    auto *queued = new QueuedCall(call);
    if (type != Qt::BlockingQueuedConnection)
        return invoke(object, queued, type, result);
    queued->ref();
    const bool isInvoked = invoke(object, queued, type, result);
    acquire(queued);
    queued->destroyIfLastRef();
    return isInvoked;
}

void QThreadPool::start(std::function<void()> task, int priority)
{
    using Start = void(QThreadPool *, std::function<void()>, int);
    static const auto startTask = original<Start>("_ZN11QThreadPool5startESt8functionIFvvEEi");
    release(this);
    startTask(
        this,
        [this, task = std::move(task)]() mutable {
            acquire(this);
            task();
            task = {};
            release(this);
        },
        priority);
}

bool QThreadPool::waitForDone(int milliseconds)
{
    using Wait = bool(QThreadPool *, int);
    static const auto wait = original<Wait>("_ZN11QThreadPool11waitForDoneEi");
    const bool isDone = wait(this, milliseconds);
    acquire(this);
    return isDone;
}

bool QThread::wait(QDeadlineTimer deadline)
{
    using Wait = bool(QThread *, QDeadlineTimer);
    static const auto waitFor = original<Wait>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool hasEnded = waitFor(this, deadline);
    acquire(this);
    return hasEnded;
}
