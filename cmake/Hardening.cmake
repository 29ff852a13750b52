# Makes what users get harder to attack, and free of the paths of the machine that built it. What a
# mistake in memory could be used for, the compiler and the loader stop; measured, that costs the
# library less than the noise. scripts/checks/hardening.sh looks at the result.

include(CheckPIESupported)
check_pie_supported()

# Sanitizers bring what is stronger, and clash with some of these.
if(NOT TABULET_SANITIZE)
    add_compile_options("$<$<CONFIG:Release>:-fstack-protector-strong;-fstack-clash-protection>"
                        "$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    add_link_options("$<$<CONFIG:Release>:-Wl,-z,relro;-Wl,-z,now;-Wl,-z,noexecstack>")
endif()
add_compile_options("$<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
