#include "platform/ForEachInParallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace vardenix {

namespace {

// The items of one run, handed out in order to whoever asks.
class Items {
public:
    Items(size_t count, const std::function<void(size_t)>& work)
        : count_(count), work_(work) {}

    // Works on the next item; false when there is none left. An item that was taken is
    // worked on whatever happens meanwhile: it may be the lowest that fails.
    bool WorkOnNext() {
        if (ended_)
            return false;
        const size_t item = next_.fetch_add(1);
        if (item >= count_)
            return false;
        try {
            work_(item);
        } catch (...) {
            Keep(item, std::current_exception());
        }
        return true;
    }

    void End() { ended_ = true; }

    void RethrowFirst() const {
        if (error_)
            std::rethrow_exception(error_);
    }

private:
    // Items are handed out in order, so when one fails all before it are in work already:
    // the lowest that fails is known once the threads have ended.
    void Keep(size_t item, std::exception_ptr error) {
        ended_ = true;
        const std::lock_guard lock(mutex_);
        if (!error_ || item < failed_) {
            error_ = std::move(error);
            failed_ = item;
        }
    }

    const size_t count_;
    const std::function<void(size_t)>& work_;
    std::atomic<size_t> next_ = 0;
    std::atomic<bool> ended_ = false;
    std::mutex mutex_;
    std::exception_ptr error_;
    size_t failed_ = 0;
};

// The threads beside the calling one. When this object goes, also through an error of
// `stop`, nothing new is begun and all of them have ended.
class Helpers {
public:
    Helpers(Items& items, size_t count) : items_(items) {
        threads_.reserve(count);
        try {
            while (threads_.size() < count)
                threads_.emplace_back([&items] {
                    while (items.WorkOnNext()) {
                    }
                });
        } catch (const std::system_error&) {
            // The system gives no more threads: those there are do the work.
        }
    }
    Helpers(const Helpers&) = delete;
    Helpers& operator=(const Helpers&) = delete;
    ~Helpers() { items_.End(); }

private:
    Items& items_;
    std::vector<std::jthread> threads_; // join as they go, after the end is told
};

} // namespace

bool ForEachInParallel(size_t count, const std::function<void(size_t)>& work,
                       const std::function<bool()>& stop, unsigned threads) {
    if (threads == 0)
        threads = std::max(1U, std::thread::hardware_concurrency());
    Items items(count, work);
    bool stopped = false;
    {
        const Helpers helpers(items, std::min<size_t>(threads - 1, count));
        do
            stopped = stop && stop();
        while (!stopped && items.WorkOnNext());
    }
    items.RethrowFirst();
    return !stopped;
}

} // namespace vardenix
