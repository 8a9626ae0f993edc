# The DWG-shaped file writer, shared by the tests, the benchmarks and the sample maker; included
# by each so that it exists whichever of them a build has.
if(NOT TARGET tabrow_dwg_samples)
  tabrow_library(tabrow_dwg_samples SOURCES ${PROJECT_SOURCE_DIR}/tools/dwgsamples/dwg_sample_writer.cpp
    DEPS tabrow_views)
endif()
