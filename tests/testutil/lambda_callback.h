#pragma once

#include <NXOpen/Callback.hxx>
#include <NXOpen/UIStyler_StylerEvent.hxx>

#include <functional>
#include <utility>

namespace TestUtil {

using Handler = std::function<NXOpen::UIStyler::DialogState(NXOpen::UIStyler::StylerEvent*)>;

/// A UIStyler handler from a lambda, for tests that register handlers without a dialog class.
class LambdaCallback
    : public NXOpen::Callback1<NXOpen::UIStyler::DialogState, NXOpen::UIStyler::StylerEvent*> {
public:
    explicit LambdaCallback(Handler fn) : m_fn(std::move(fn)) {}
    NXOpen::UIStyler::DialogState operator()(NXOpen::UIStyler::StylerEvent* e) const override {
        return m_fn(e);
    }
    NXOpen::BaseCallback* Clone() const override { return new LambdaCallback(*this); }
    bool Equals(const NXOpen::BaseCallback& other) const override { return &other == this; }

private:
    Handler m_fn;
};

} // namespace TestUtil
