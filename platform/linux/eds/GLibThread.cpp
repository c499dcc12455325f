#include "platform/linux/eds/GLibThread.h"

#include <utility>

namespace tessaly {

const GLibThread &GLibThread::shared()
{
    static const auto *const thread = new GLibThread;
    return *thread;
}

GLibThread::GLibThread()
    : m_context(g_main_context_new()), m_thread([this] {
          g_main_context_push_thread_default(m_context);
          g_main_loop_run(g_main_loop_new(m_context, FALSE));
      })
{
}

void GLibThread::post(std::function<void()> work, std::chrono::milliseconds delay) const
{
    GSource *source = delay.count() > 0 ? g_timeout_source_new(static_cast<guint>(delay.count())) : g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(
        source,
        [](gpointer data) -> gboolean {
            (*static_cast<std::function<void()> *>(data))();
            return G_SOURCE_REMOVE;
        },
        new std::function<void()>(std::move(work)),
        [](gpointer data) { delete static_cast<std::function<void()> *>(data); });
    g_source_attach(source, m_context);
    g_source_unref(source);
}

} // namespace tessaly
