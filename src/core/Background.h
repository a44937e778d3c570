#pragma once

#include <QPromise>
#include <QThreadPool>

#include <memory>
#include <type_traits>
#include <utility>

/// Runs `work` beside the window's thread and delivers its result; the application waits for it at
/// its end. It must touch no store. Cancelled before its turn it does not run.
template <typename Work> auto inBackground(Work work) -> QFuture<std::invoke_result_t<Work>>
{
    // Shared, because the pool copies what it runs.
    const auto promise = std::make_shared<QPromise<std::invoke_result_t<Work>>>();
    promise->start();
    QThreadPool::globalInstance()->start([promise, work = std::move(work)] {
        if (!promise->isCanceled())
            promise->addResult(work());
        promise->finish();
    });
    return promise->future();
}
