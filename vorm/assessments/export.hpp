#pragma once

/// Marks what belongs to the exported interface of the shared library; all else is hidden.
#define VORM_ASSESSMENTS_EXPORT __attribute__((visibility("default")))
