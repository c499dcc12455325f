#pragma once

#include <glib-object.h>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace tessaly {

struct GObjectUnref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference.
template <class T>
using GObjectPtr = std::unique_ptr<T, GObjectUnref>;

/// One more reference to an object that somebody else owns.
template <class T>
[[nodiscard]] GObjectPtr<T> referenceTo(T *object)
{
    return GObjectPtr<T>(static_cast<T *>(g_object_ref(object)));
}

struct GErrorFree
{
    void operator()(GError *error) const { g_error_free(error); }
};
using GErrorPtr = std::unique_ptr<GError, GErrorFree>;

/// The thread whose main context is the default one of what is created on it: GLib delivers there, whichever event loop
/// the main thread has. It lasts as long as the process, because libraries share objects between those who ask for
/// them, and an object goes on delivering where it was created first.
class GLibThread
{
public:
    [[nodiscard]] static const GLibThread &shared();
    GLibThread(const GLibThread &) = delete;
    GLibThread &operator=(const GLibThread &) = delete;
    ~GLibThread() = delete;

    /// From any thread; in order.
    void post(std::function<void()> work, std::chrono::milliseconds delay = {}) const;

private:
    GLibThread();

    GMainContext *m_context;
    std::thread m_thread;
};

} // namespace tessaly
