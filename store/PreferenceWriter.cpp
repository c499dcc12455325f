#include "store/PreferenceWriter.h"

namespace tessaly {

PreferenceWriter::PreferenceWriter(std::chrono::milliseconds retryInterval, QObject *parent) : QObject(parent)
{
    m_timer.setInterval(retryInterval);
    connect(&m_timer, &QTimer::timeout, this, &PreferenceWriter::retry);
}

void PreferenceWriter::close()
{
    blockSignals(true);
    tryUnsaved();
    m_unsaved.clear();
    m_timer.stop();
}

void PreferenceWriter::write(const QString &name, const Write &write)
{
    const bool wasUnsaved = m_unsaved.remove(name) > 0;
    if (const Result<void> written = write(); !written) {
        m_unsaved.insert(name, write);
        m_timer.start();
        emit failed(written.error());
    } else if (wasUnsaved || hasUnsaved()) {
        tryUnsaved();
    }
}

void PreferenceWriter::retry()
{
    if (hasUnsaved())
        tryUnsaved();
}

void PreferenceWriter::tryUnsaved()
{
    for (auto unsaved = m_unsaved.begin(); unsaved != m_unsaved.end();) {
        if (const Result<void> written = (*unsaved)(); !written) {
            m_timer.start();
            emit failed(written.error());
            return;
        }
        unsaved = m_unsaved.erase(unsaved);
    }
    m_timer.stop();
    emit recovered();
}

} // namespace tessaly
