#pragma once

// What is wrong with a file, fault by fault; included by the sources of this folder only.

#include <vorm/evaluation/text/input_error.hpp>

#include <vector>

namespace vorm::evaluation::detail {

class FaultCollection {
public:
    /// Without a list, null, the first fault is thrown.
    explicit FaultCollection(std::vector<InputError>* errors) : errors_(errors) {}

    /// Reads something. Gives whether it can be read; what is wrong with it joins the list.
    template <class Read>
    bool attempt(Read read) const {
        if (errors_ == nullptr) {
            read();
            return true;
        }
        try {
            read();
            return true;
        } catch (const InputError& error) {
            errors_->push_back(error);
            return false;
        }
    }

private:
    std::vector<InputError>* errors_;
};

}  // namespace vorm::evaluation::detail
