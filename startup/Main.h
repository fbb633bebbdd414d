#pragma once

namespace tovel {

/// The setup's entry point once main() has installed the platform.
void Main();

} // namespace tovel
