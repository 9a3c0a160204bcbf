# What Debian builds its packages with against faults that overwrite memory; for the release alone,
# since the sanitizers find more. Position-independent programs are what Debian's compilers make anyway.

if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT ZENTRO_SANITIZE AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong
                        -Wformat -Werror=format-security)
    add_link_options(-Wl,-z,relro -Wl,-z,now)
endif()
