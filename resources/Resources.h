#pragma once

/// Registers the pictures of quorvane.qrc under ":/icons" and ":/artwork". A program that links them from a static
/// library loses them unless something calls this; a second call does nothing.
void initQuorvaneResources();
