#pragma once

/// While one of these lives, the C library converts between no character sets, as on a system that
/// lacks the modules for them.
class WithoutEncodingModules {
public:
    WithoutEncodingModules();
    WithoutEncodingModules(const WithoutEncodingModules&) = delete;
    WithoutEncodingModules& operator=(const WithoutEncodingModules&) = delete;
    ~WithoutEncodingModules();
};
