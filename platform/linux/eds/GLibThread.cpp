#include "platform/linux/eds/GLibThread.h"

#include <utility>

namespace tessaly {

GLibThread::GLibThread()
    : m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, FALSE)), m_thread([this] {
          g_main_context_push_thread_default(m_context);
          g_main_loop_run(m_loop);
          // Subscriptions that have just ended release their data here.
          while (g_main_context_iteration(m_context, FALSE)) {
          }
          g_main_context_pop_thread_default(m_context);
      })
{
}

GLibThread::~GLibThread()
{
    post([this] { g_main_loop_quit(m_loop); });
    m_thread.join();
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
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
