# Files as editors, other tools and a program that was cut off leave them.
# A byte-order mark is no part of the first name, and stays where it is.
$ mkdir Quorin && printf '\357\273\277NAME|INFFILE\r\nMeter|meter.txt\r\n' > Quorin/drivers.txt
$ printf '\357\273\277DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf '\357\273\277FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\n' > Quorin/meter.txt
$ printf '\357\273\277Place\nHall\n' > Quorin/qrn0001.txt
$ quorin-console --strict
> choose Start...
> choose Ok
> choose Open
> tick 200
> tap 0 1
> set Roof
> choose Next Record
> tick 200
> show
> choose Close
$ od -c Quorin/qrn0001.txt
# A package that an editor has saved: with a byte-order mark, an empty line in front of the driver's row and one at the
# end. The one between two rows of the inf table counts.
$ printf '\357\273\277# Soil\r\n\r\nSoil|soil.txt\r\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\r\nPlot|1||||||\r\n\r\n' > Quorin/soil.qvd
# A package of a driver's row and a header alone is copied as it is.
$ printf 'Bare|bare.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n' > Quorin/bare.qvd
$ rm Quorin/qrnctrl.txt
$ quorin-console --strict
> choose inf editor...
> choose Add Driver...
> show
> choose Install...
>> answer ok
> tap 1
> choose Install...
>> answer ok
> close
> close
$ cat Quorin/drivers.txt Quorin/soil.txt Quorin/bare.txt
# Its inf table gets a blank row when a download is opened, and the register, which is missing, is made by "New".
$ quorin-console --strict
> choose Start...
> tap 1
> show
> choose New
> choose Open
> tick 200
> show
> choose Close
$ cat Quorin/bare.txt Quorin/qrnctrl.txt
# An inf table of no byte gets its header as well.
$ : > Quorin/bare.txt && rm Quorin/qrn0001.txt
$ quorin-console --strict
> choose Start...
> tap 1
> choose Open
> choose Close
$ cat Quorin/bare.txt
# A file that another tool is just writing is empty for a moment: it is looked at a second time.
$ : > Quorin/drivers.txt && (sleep 0.4 && printf 'NAME|INFFILE\nWritten|late.txt\n' > Quorin/drivers.txt) > /dev/null 2>&1 &
$ quorin-console --strict
> choose Start...
> show
$ cat Quorin/drivers.txt
# A NUL is a blank wherever it comes from, and a line feed in a line database.
$ printf 'NAME|INFFILE\nSoil\000Meter|soil.txt\n' > Quorin/drivers.txt
$ quorin-console --strict
> choose Start...
> show
> choose Ok
> choose New
> choose Open
> tap 0 1
> set "a\u0000b"
> choose Close
$ od -c Quorin/qrn0001.txt | head -2
