# A date that a person or another tool has written need not look as Quorin writes it. One that is only looked at stays as
# it was; two digits are a year from 1930 to 2029.
$ mkdir Quorin && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||||||\nDug|1|||||date|\nSown|1|||||DATE|\nCut|1|||||DATE|\n' > Quorin/soil.txt
$ printf 'Plot|Dug|Sown|Cut\nA1|05/03/07|7/4/1999| 1 / 12 / 31 \n' > Quorin/qrn0001.txt
$ quorin-console --strict
> choose Start...
> choose Ok
> choose Open
> tick 200
> tap 1 1
> show
> choose Ok
> tick 200
> tap 2 1
> choose Ok
> tick 200
> tap 3 1
> show
> choose Ok
> tick 200
> show
> choose Next Record
> tick 200
# The day behind it is another date, and is written in full.
> tap 1 1
> key 39
> choose Ok
> tick 200
> choose Close
$ cat Quorin/qrn0001.txt
# A sign is in no date.
$ printf 'Plot|Dug|Sown|Cut\nA1|+5/03/2007||\n' > Quorin/qrn0001.txt
$ quorin-console
> choose Start...
> choose Ok
> choose Open
> tick 200
> tap 1 1
