// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QThread>

#include <exception>
#include <functional>
#include <memory>

/// Does one job for each start(), which takes long and makes a value.
///
/// The owner, to whom this object belongs, sets the job before start(), hears of the end by finished() and
/// may look at the result from then on, until the next start().
template <typename Result>
class QJobThread : public QThread
{
public:
    /// Throws a std::exception when it cannot be done. Runs on the thread.
    using Job = std::function<std::shared_ptr<const Result>()>;

    void SetJob(Job job) { m_Job = std::move(job); }

    void run() override
    {
        m_pResult.reset();
        m_strError.clear();
        try {
            m_pResult = m_Job();
        } catch (const std::exception& error) {
            m_strError = QString::fromUtf8(error.what());
        }
    }

    /// Null when it could not be done.
    const std::shared_ptr<const Result>& GetResult() const { return m_pResult; }
    /// Why it could not.
    const QString& GetErrorText() const { return m_strError; }

    /// In place of delete: at once, or when the job under way is done, for which nobody waits.
    void DeleteWhenDone()
    {
        connect(this, &QThread::finished, this, &QObject::deleteLater);
        if (!isRunning())
            delete this;
    }

private:
    Job m_Job;
    std::shared_ptr<const Result> m_pResult;
    QString m_strError;
};
