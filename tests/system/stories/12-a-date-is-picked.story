# A field for a date asks for it with a picker over the whole screen.
$ mkdir Quorin && printf 'NAME|INFFILE\nSoil Meter|soil.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nSoil Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlot|1||||||\nDug|1|||||date|\nSown|1|||||DATE|\n' > Quorin/soil.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
# For an empty field the picker opens on today. A tap on a date in the picker closes it.
> tap 1 1
{"done":"tap"}
> show
      Dug
    --------------------------------------------------------------------------------
      [ 2007-03-05 ]
    --------------------------------------------------------------------------------
    [Back]                                                                      [Ok]
{"done":"show"}
> pick 2007-04-09
{"done":"pick"}
> tick 200
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
      Plot
    > Dug                                    09/04/2007
      Sown
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# For a field with a date it opens on that date. The keys move by a day and by a week, Enter chooses the date.
> tap 1 1
{"done":"tap"}
> key 37
{"done":"key"}
> key 38
{"done":"key"}
> show
      Dug
    --------------------------------------------------------------------------------
      [ 2007-04-01 ]
    --------------------------------------------------------------------------------
    [Back]                                                                      [Ok]
{"done":"show"}
> key 13
{"done":"key"}
> tick 200
{"done":"tick"}
> tap 2 1
{"done":"tap"}
> key 39
{"done":"key"}
> key 40
{"done":"key"}
> key 40
{"done":"key"}
> choose Ok
{"done":"choose"}
> tick 200
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
      Plot
      Dug                                    01/04/2007
    > Sown                                   20/03/2007
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# Back does not change the date, but the record counts as changed and is saved.
> tap 2 1
{"done":"tap"}
> key 39
{"done":"key"}
> choose Back
{"done":"choose"}
> tick 200
{"done":"tick"}
> choose Next Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
# A tap on the name of the field opens no picker, and Esc is Back too.
> tap 2 0
{"done":"tap"}
> tap 1 1
{"done":"tap"}
> key 27
{"done":"key"}
> tick 200
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
      Plot
    > Dug                                    01/04/2007
      Sown                                   20/03/2007
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
$ cat Quorin/qrn0001.txt
Plot|Dug|Sown
|01/04/2007|20/03/2007

# A date in a form that the program does not know ends the program before the date can be overwritten.
$ sed -i 's#^|.*#A1|2007-04-01|#' Quorin/qrn0001.txt && cat Quorin/qrn0001.txt
Plot|Dug|Sown
A1|2007-04-01|
$ quorin-console
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 1 1
{"event":"failure","text":"\"2007-04-01\" is not a date of the form day/month/year: correct it in the file of the table with any editor"}
{"done":"tap","error":"the program has ended"}
stderr: quorin-console: "2007-04-01" is not a date of the form day/month/year: correct it in the file of the table with any editor
[exit status 1]
$ cat Quorin/qrn0001.txt
Plot|Dug|Sown
A1|2007-04-01|
