# Makes the Debian packages of this build.
include("${CMAKE_CURRENT_LIST_DIR}/debs.cmake")

file(REMOVE_RECURSE "${DEBS_DIR}")
# Quicker than what packages that are given away are compressed with.
run("cpack" "${CPACK}" --config "${BINARY_DIR}/CPackConfig.cmake" -G DEB -C "${BUILD_TYPE}" -B "${DEBS_DIR}"
    -D CPACK_DEBIAN_COMPRESSION_TYPE=gzip)
file(REMOVE_RECURSE "${DEBS_DIR}/_CPack_Packages")

execute_process(COMMAND dpkg --print-architecture
    OUTPUT_VARIABLE architecture OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
list(TRANSFORM PACKAGES APPEND "_${VERSION}_${architecture}.deb" OUTPUT_VARIABLE expected)
list(SORT expected)
file(GLOB made LIST_DIRECTORIES TRUE RELATIVE "${DEBS_DIR}" "${DEBS_DIR}/*")
expect_equal("What was made" "${made}" "${expected}")
