#pragma once

#include "stress/StressCheck.h"
#include "stress/StressJobs.h"

#include <QMap>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <functional>
#include <optional>

/// Kills a process over and over while it works on the records, and lets another one look at what
/// is left. Half of the kills come from outside after a random time, half strike at a random one of
/// the system calls that change files.
class StressRun final {
public:
    struct Options {
        int kills = 0; // 0: until the time is over
        int seconds = 0; // 0: until all are done
        quint32 seed = 1;
        std::optional<Job> only;
    };
    struct Figures {
        QMap<Job, int> kills;
        int atSystemCalls = 0;
        int undisturbed = 0; // were done before the kill came
        StressFindings sums; // `problems` with round and job in front
    };

    explicit StressRun(const Options& options);

    /// The reason when the run could not begin.
    [[nodiscard]] QString prepare();
    [[nodiscard]] Figures run();
    /// Every job once killed before each of its system calls that change files, on fresh data.
    [[nodiscard]] Figures runEveryStep();

private:
    // How long a job takes, for moments that lie within it.
    struct Extent {
        int steps = 0; // system calls that change files
        int microseconds = 0;
        quint32 seed = 0; // of the measured job
    };
    struct Outcome {
        QStringList lines;
        bool killed = false;
    };
    struct Moment {
        int step = 0; // 0: by time
        int microseconds = 0;
    };
    using Work = std::function<void()>;

    static Outcome inChild(const Work& work, std::optional<int> patience = {});
    void reset();
    Job nextJob();
    Moment momentIn(const Extent& extent);
    Extent measure(Job job);
    Outcome disturbed(Job job, Moment moment, quint32 seed);
    QStringList disturb(Job job, Moment moment, quint32 seed, Figures& figures);
    void examine(const QStringList& lines, const QString& title, Figures& figures);
    void round(int number, Figures& figures);

    Options m_options;
    QRandomGenerator m_random;
    QTemporaryDir m_root;
    QMap<Job, Extent> m_extents;
    QString m_prepared; // signature of the backup that is restored
};
