# How the median time of something grows with a number: both axes logarithmic. The caller sets output, title and label.
set terminal svg size 720,420 font "sans-serif,13" background "white"
set output output
set title title noenhanced
set xlabel label noenhanced
set ylabel "time"
set logscale xy
set format x "10^{%L}"
set format y "%.0s %cs"
set grid
set key below noenhanced
