#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "kiv/notification.h"
#include "kiv/observer.h"

namespace test {

/// An observer that calls a function.
class Callback : public Kiv_v4::Observer
{
public:
    using Function = std::function<void(const Kiv_v4::Notification&)>;

    explicit Callback(Function function) : _function(std::move(function)) {}

    void operator()(const Kiv_v4::Notification& notification) override { _function(notification); }

    static Ptr make(Function function) { return std::make_shared<Callback>(std::move(function)); }

private:
    Function _function;
};

} // namespace test
